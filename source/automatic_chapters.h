#ifndef SOURCE_AUTOMATIC_CHAPTERS_H_
#define SOURCE_AUTOMATIC_CHAPTERS_H_

#include <cstdint>

namespace KVL {

// A title's duration is cut into this many equal chapters.
constexpr uint32_t kAutomaticChapterCount = 10;

// Chapter i starts at i tenths of the duration taken downwards and ends at
// i + 1 tenths taken upwards, so chapter 0 starts at 0 and chapter 9 ends
// exactly at the duration. Divisions truncate towards zero; the products are
// formed in 128 bits so that no duration a file can state overflows them.
inline int64_t AutomaticChapterStart(int64_t duration, uint32_t index) {
  return static_cast<int64_t>(static_cast<__int128>(index) * duration / kAutomaticChapterCount);
}

inline int64_t AutomaticChapterEnd(int64_t duration, uint32_t index) {
  const __int128 rest = static_cast<__int128>(kAutomaticChapterCount - 1 - index) * duration;
  return static_cast<int64_t>(duration - rest / kAutomaticChapterCount);
}

}  // namespace KVL

#endif  // SOURCE_AUTOMATIC_CHAPTERS_H_
