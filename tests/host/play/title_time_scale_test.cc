#include "host/play/title_time_scale.h"

#include <gtest/gtest.h>

namespace kvlhost {
namespace {

TEST(TitleTimeScale, MapsByTheTitleLengthInBothUnits) {
  const struct {
    uint32_t engineLength, tickLength;  // the title: chapter 9's end, duration()
    uint32_t engineTime, ticks;         // a time in both units
  } cases[] = {
      {502300, 5023, 251150, 2511},    // milliseconds, taken downwards
      {560500, 56050, 280250, 28025},  // 100 us ticks
      {0, 5023, 100000, 1000},         // no duration: milliseconds
      {1, 0xFFFFFFFF, 2, 0xFFFFFFFF},  // saturates instead of wrapping
  };
  for (const auto& c : cases) {
    const TitleTimeScale scale(c.engineLength, c.tickLength);
    EXPECT_EQ(scale.ToTicks(c.engineTime), c.ticks) << c.engineLength << "/" << c.tickLength;
  }
  EXPECT_EQ(TitleTimeScale(502300, 5023).ToEngineTime(2511), 251100u);
}

}  // namespace
}  // namespace kvlhost
