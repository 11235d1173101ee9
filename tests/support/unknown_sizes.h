// A Matroska file as a live muxer would have written it: the Segment's and
// every Cluster's size "unknown".
#ifndef MKVSOURCE_TESTS_SUPPORT_UNKNOWN_SIZES_H_
#define MKVSOURCE_TESTS_SUPPORT_UNKNOWN_SIZES_H_

#include <cstddef>
#include <vector>

#include "tests/support/temp_file.h"

namespace mkvtest {

// Where the size fields of every Segment and of its Clusters lie in `file`,
// found by walking the top-level elements and the Segment's children by
// their sizes. `*whole` tells whether the walk reached the end: not where an
// element can't be read or its size is already unknown, since only a parse
// of its children would tell where it ends.
std::vector<size_t> SegmentAndClusterSizeFields(const Bytes& file, bool* whole);

// Writes "unknown" into each of `fields`, in the same number of bytes, so
// that every other byte stays where it was.
void WriteUnknownSizes(Bytes& file, const std::vector<size_t>& fields);

// `file` with the size fields that the walk finds written as unknown; bytes
// past a malformed element stay as they were.
Bytes WithUnknownSizes(Bytes file);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_UNKNOWN_SIZES_H_
