// The parser's Segment::Load against ClusterHeads::Load, which stands in for
// it in the probe, over the same bytes.
#ifndef MKVSOURCE_TESTS_SUPPORT_SEGMENT_LOAD_CHECK_H_
#define MKVSOURCE_TESTS_SUPPORT_SEGMENT_LOAD_CHECK_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace mkvtest {

struct LoadComparison {
  long status = 0;  // the parser's
  // Empty when both give the same status and the same clusters (position and
  // timecode, in order); else what differs.
  std::string difference;
};
// Bytes without a segment to load compare as equal, with status 1.
LoadComparison CompareLoads(const uint8_t* data, size_t size);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_SEGMENT_LOAD_CHECK_H_
