// Every fuzz input replayed through the fuzz target: the committed media, the
// reproducers of earlier findings, the public corpus when it is beside.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/source_harness.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

namespace fs = std::filesystem;

TEST(FuzzReplay, EveryInputEndsCleanly) {
  for (const char* dir :
       {"tests/data/media", "samples", "tests/fuzz/reproducers", "../shared/corpus/libwebm"}) {
    const fs::path root = fs::path(MKVSOURCE_SOURCE_DIR) / dir;
    if (!fs::is_directory(root)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      const fs::path& file = entry.path();
      if (file.extension() != ".mkv" && file.extension() != ".webm") continue;
      SCOPED_TRACE(file.string());
      std::ifstream in(file, std::ios::binary);
      const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
      mkvtest::OutputOf(1, [&] { LLVMFuzzerTestOneInput(bytes.data(), bytes.size()); });
    }
  }
}

}  // namespace
