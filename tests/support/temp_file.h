// Temporary files for tests. They live in one folder per test process,
// which is removed with everything in it when the process exits.
#ifndef MKVSOURCE_TESTS_SUPPORT_TEMP_FILE_H_
#define MKVSOURCE_TESTS_SUPPORT_TEMP_FILE_H_

#include <string>

#include "tests/support/ebml_writer.h"

namespace mkvtest {

struct MkvFile;

// The process's temporary folder, made on first use.
const std::string& TempDir();

// A path in TempDir() that no earlier call returned; nothing is created.
// `suffix` ends the file name, e.g. ".mkv" or " with spaces.mkv".
std::string NewTempPath(const std::string& suffix = ".mkv");

// Writes the bytes, or the serialized file, to a new temporary file and
// returns its path. Aborts the test process if the file can't be written.
std::string WriteTemp(const Bytes& bytes, const std::string& suffix = ".mkv");
std::string WriteTemp(const MkvFile& file);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_TEMP_FILE_H_
