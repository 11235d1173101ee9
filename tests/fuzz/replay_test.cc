// Every fuzz input replayed through the fuzz target's own path: the committed
// media, the reproducers of earlier findings, the public corpus when it is beside.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/fuzz/whole_path.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

namespace fs = std::filesystem;

TEST(FuzzReplay, EveryInputEndsCleanlyAndTheCommittedMediaGiveChunks) {
  const std::string dirs[] = {"tests/data/media", "samples", "tests/fuzz/reproducers",
                              "../shared/corpus/libwebm"};
  for (const std::string& dir : dirs) {
    const fs::path root = fs::path(MKVSOURCE_SOURCE_DIR) / dir;
    if (!fs::is_directory(root)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      const fs::path& file = entry.path();
      if (file.extension() != ".mkv" && file.extension() != ".webm") continue;
      SCOPED_TRACE(file.string());
      std::ifstream in(file, std::ios::binary);
      const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
      size_t chunks = 0;
      OutputOf(1, [&] { chunks = PlayWholePath(bytes.data(), bytes.size()); });
      // Without chunks from the media, the fuzzer's seeds would stop at the probe.
      if (dir == dirs[0] || dir == dirs[1]) {
        EXPECT_EQ(chunks > 0, file.stem() != "aac_only");
      }
    }
  }
}

}  // namespace
}  // namespace mkvtest
