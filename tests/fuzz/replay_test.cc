// The fuzz inputs replayed in the ordinary builds, through the fuzz target's
// own path: the committed media, the reproducers of earlier findings, and
// the public corpus beside the project when it is there.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/fuzz/whole_path.h"
#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

namespace fs = std::filesystem;

size_t Replay(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
  size_t chunks = 0;
  OutputOf(1, [&] { chunks = PlayWholePath(bytes.data(), bytes.size()); });
  return chunks;
}

// Without chunks from the media, the fuzzer's seeds would stop at the probe.
TEST(FuzzReplay, CommittedMediaPlayFromMemory) {
  for (const auto& entry : fs::directory_iterator(MKVSOURCE_SOURCE_DIR "/tests/data/media")) {
    if (entry.path().extension() != ".mkv") continue;
    EXPECT_EQ(Replay(entry.path()) > 0, entry.path().stem() != "aac_only") << entry.path();
  }
  EXPECT_GT(Replay(MediaPath("sample")), 0u);
}

TEST(FuzzReplay, ReproducersAndPublicCorpusEndCleanly) {
  for (const char* dir : {MKVSOURCE_SOURCE_DIR "/tests/fuzz/reproducers",
                          MKVSOURCE_SOURCE_DIR "/../shared/corpus/libwebm"}) {
    if (!fs::is_directory(dir)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(dir)) {
      const fs::path& file = entry.path();
      if (file.extension() != ".mkv" && file.extension() != ".webm") continue;
      SCOPED_TRACE(file.string());
      Replay(file);
    }
  }
}

}  // namespace
}  // namespace mkvtest
