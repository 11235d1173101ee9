// The picture's label texts and the round numbers its scales stand at.
#include "host/plot/plot_labels.h"

#include <gtest/gtest.h>

namespace kvlhost {
namespace {

TEST(PlotLabels, TimesSizesAndRates) {
  EXPECT_EQ(DurationText(5.023), "5.02 s");
  EXPECT_EQ(DurationText(36000.64), "10:00:01");
  EXPECT_EQ(SecondsText(4.9834, 3), "4.983 s");
  EXPECT_EQ(SecondsText(61.5, 1), "1:01.5");
  EXPECT_EQ(ClockText(0.5, 5, 1), "0:00.5");
  EXPECT_EQ(ClockText(59.96, 120, 1), "1:00.0");
  EXPECT_EQ(ClockText(7200, 36000, 0), "2:00:00");
  EXPECT_EQ(ClockText(3599, 3599, 0), "59:59");
  EXPECT_EQ(SizeText(900), "900 bytes");
  EXPECT_EQ(SizeText(182485), "182.5 kB");
  EXPECT_EQ(SizeText(1457870034), "1.46 GB");
  EXPECT_EQ(RateText(64), "64 bit/s");
  EXPECT_EQ(RateText(820000), "820 kbit/s");
  EXPECT_EQ(RateText(999600), "1 Mbit/s");  // not "1e+03 kbit/s"
  EXPECT_EQ(RateText(2.5e6), "2.5 Mbit/s");
}

TEST(PlotLabels, RoundNumbers) {
  const struct {
    double value, roundUp, axisStep;
  } cases[] = {
      {0, 1, 0.1},       {0.7, 1, 0.1},          {2.04, 2.5, 0.5},        {5.023, 10, 1},
      {1200, 2000, 120}, {36000.6, 50000, 7200}, {2e6, 2e6, 86400 * 2.5},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_DOUBLE_EQ(RoundUp(c.value), c.roundUp);
    EXPECT_DOUBLE_EQ(AxisStep(c.value), c.axisStep);
  }
}

}  // namespace
}  // namespace kvlhost
