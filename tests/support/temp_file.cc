#include "tests/support/temp_file.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "tests/support/mkv_writer.h"

namespace mkvtest {
namespace {

[[noreturn]] void Fail(const char* what, const std::string& path) {
  std::perror((std::string(what) + " " + path).c_str());
  std::abort();
}

class ProcessTempDir {
 public:
  ProcessTempDir() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "mkvsource-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) Fail("mkdtemp", pattern);
    path_ = pattern;
  }
  ~ProcessTempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace

const std::string& TempDir() {
  static const ProcessTempDir dir;
  return dir.path();
}

std::string NewTempPath(const std::string& suffix) {
  static std::atomic<unsigned> count{0};
  return TempDir() + "/file" + std::to_string(count++) + suffix;
}

std::string WriteTemp(const Bytes& bytes, const std::string& suffix) {
  const std::string path = NewTempPath(suffix);
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) Fail("fopen", path);
  const bool written =
      bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  if (std::fclose(file) != 0 || !written) Fail("write", path);
  return path;
}

std::string WriteTemp(const MkvFile& file) { return WriteTemp(Serialize(file).bytes); }

}  // namespace mkvtest
