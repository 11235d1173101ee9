// Temporary files for tests, in one folder per test process under
// testing::TempDir(), which goes with everything in it when the process ends.
#ifndef MKVSOURCE_TESTS_SUPPORT_TEMP_FILE_H_
#define MKVSOURCE_TESTS_SUPPORT_TEMP_FILE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace mkvtest {

using Bytes = std::vector<uint8_t>;

// A path that no earlier call returned, ending in `suffix`; nothing is created.
std::string NewTempPath(const std::string& suffix = ".mkv");

// Writes `bytes` to a new temporary file and returns its path.
std::string WriteTemp(const Bytes& bytes, const std::string& suffix = ".mkv");

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_TEMP_FILE_H_
