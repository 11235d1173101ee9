// A long Matroska file for benchmarks: 25 fps video and 50 audio frames a
// second, one cluster a second, made once with the test writer.
#ifndef MKVSOURCE_BENCHMARKS_LONG_FILE_H_
#define MKVSOURCE_BENCHMARKS_LONG_FILE_H_

#include <string>

#include "tests/support/mkv_writer.h"

namespace mkvbench {

// The bytes of a file of `seconds` seconds, its frames `payloadScale` times
// the usual size.
mkvtest::Bytes LongFileBytes(int seconds, int payloadScale = 1);
// Writes a file of `minutes` minutes to `path`.
void WriteLongFile(const std::string& path, int minutes);

// The bytes of a file of `clusters` one-second clusters of 25 small video
// frames, with 50 audio frames only in every `audioEvery`-th cluster, the
// first included: a sparse track that a seek must look far back for.
mkvtest::Bytes SparseFileBytes(int clusters, int audioEvery);

}  // namespace mkvbench

#endif  // MKVSOURCE_BENCHMARKS_LONG_FILE_H_
