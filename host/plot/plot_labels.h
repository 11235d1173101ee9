#ifndef HOST_PLOT_PLOT_LABELS_H_
#define HOST_PLOT_PLOT_LABELS_H_

#include <cstdint>
#include <string>

namespace kvlhost {

// The texts of a picture's labels, and the round numbers they stand at.

// "4.983 s" under a minute, else on a clock; with `decimals` digits of a second.
std::string SecondsText(double seconds, int decimals);
// A length for a heading: "5.02 s" under a minute, else "m:ss" or "h:mm:ss".
std::string DurationText(double seconds);
// A time on an axis that spans `span` seconds: "m:ss", or "h:mm:ss" where
// the span reaches an hour; with `decimals` digits of a second.
std::string ClockText(double seconds, double span, int decimals);
// "820 kbit/s", "1.5 Mbit/s", "64 bit/s".
std::string RateText(double bitsPerSecond);
// "182.5 kB", "1.46 GB", "900 bytes".
std::string SizeText(uint64_t bytes);

// The least of 1, 2, 2.5 and 5 times a power of ten that is at least `value`
// (above 0).
double RoundUp(double value);
// The step between the labels of a time axis that spans `span` seconds: at
// most ten steps, each a round number of seconds, minutes or hours.
double AxisStep(double span);

}  // namespace kvlhost

#endif  // HOST_PLOT_PLOT_LABELS_H_
