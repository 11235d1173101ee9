#include "tests/support/temp_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>

namespace mkvtest {
namespace {

struct ProcessFolder {
  ProcessFolder() { std::filesystem::create_directories(path); }
  ~ProcessFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  const std::filesystem::path path =
      std::filesystem::path(testing::TempDir()) / ("mkvsource-" + std::to_string(getpid()));
};

}  // namespace

std::string NewTempPath(const std::string& suffix) {
  static const ProcessFolder folder;
  static std::atomic<unsigned> count{0};
  return (folder.path / ("file" + std::to_string(count++) + suffix)).string();
}

std::string WriteTemp(const Bytes& bytes, const std::string& suffix) {
  const std::string path = NewTempPath(suffix);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  return path;
}

}  // namespace mkvtest
