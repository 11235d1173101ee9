// A committed file as a live muxer would have written it.
#ifndef MKVSOURCE_TESTS_SUPPORT_UNKNOWN_SIZES_H_
#define MKVSOURCE_TESTS_SUPPORT_UNKNOWN_SIZES_H_

#include "tests/support/temp_file.h"

namespace mkvtest {

// `file` with the Segment's and every Cluster's size written as unknown. Each
// size field keeps its length, so every other byte stays where it was and the
// frames are the same. Bytes past a malformed element stay as they were.
Bytes WithUnknownSizes(Bytes file);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_UNKNOWN_SIZES_H_
