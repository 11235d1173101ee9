#include "source/segment_duration.h"

#include <limits>

namespace KVL {
namespace {

constexpr long long kDurationId = 0x4489;

}  // namespace

int64_t SegmentDuration(const mkvparser::SegmentInfo& info, mkvparser::IMkvReader* reader) {
  double ticks = -1;
  long long pos = info.m_start;
  const long long stop = info.m_start + info.m_size;
  while (pos < stop) {
    long long id = 0;
    long long size = 0;
    if (mkvparser::ParseElementHeader(reader, pos, stop, id, size) < 0) return -1;
    if (id == kDurationId && mkvparser::UnserializeFloat(reader, pos, size, ticks) < 0) return -1;
    pos += size;
  }
  if (ticks < 0) return -1;
  const double nanoseconds = ticks * static_cast<double>(info.GetTimeCodeScale());
  if (nanoseconds >= 0x1p63) return std::numeric_limits<int64_t>::max();
  return static_cast<int64_t>(nanoseconds);
}

}  // namespace KVL
