#ifndef SOURCE_SEGMENT_DURATION_H_
#define SOURCE_SEGMENT_DURATION_H_

#include <cstdint>

#include "mkvparser/mkvparser.h"

namespace KVL {

// The segment's duration in nanoseconds as SegmentInfo::GetDuration gives
// it, -1 without a Duration element, but bounded at the 64-bit maximum: the
// parser's own range check lets a product of exactly 2^63 through to a
// conversion that isn't defined. The parser keeps the value to itself, so
// the last Duration element is read again through `reader`; -1 when that
// fails.
int64_t SegmentDuration(const mkvparser::SegmentInfo& info, mkvparser::IMkvReader* reader);

}  // namespace KVL

#endif  // SOURCE_SEGMENT_DURATION_H_
