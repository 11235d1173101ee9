#ifndef STREAMS_TICK_TIME_H_
#define STREAMS_TICK_TIME_H_

#include <cstdint>
#include <limits>

namespace KVL {

// `ticks` of `scale` nanoseconds, bounded at the ends of the 64-bit range
// instead of overflowing: the engine's times and a file's timecodes can be
// anything. The parser keeps every scale at 1 or above.
inline int64_t SaturatedNanoseconds(int64_t ticks, int64_t scale) {
  int64_t nanoseconds;
  if (!__builtin_mul_overflow(ticks, scale, &nanoseconds)) return nanoseconds;
  return ticks < 0 ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
}

}  // namespace KVL

#endif  // STREAMS_TICK_TIME_H_
