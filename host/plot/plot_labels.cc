#include "host/plot/plot_labels.h"

#include <cmath>
#include <cstdio>

namespace kvlhost {
namespace {

constexpr double kSteps[] = {0.1, 0.2, 0.5, 1,   2,    5,    10,   15,    30,    60,
                             120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200};
constexpr double kMostSteps = 10;
constexpr double kSecondsPerDay = 86400;

std::string Printed(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof(text), format, value);
  return text;
}

std::string TwoDigits(uint64_t value) { return (value < 10 ? "0" : "") + std::to_string(value); }

}  // namespace

std::string SecondsText(double seconds, int decimals) {
  if (seconds >= 60) return ClockText(seconds, seconds, decimals);
  char text[64];
  std::snprintf(text, sizeof(text), "%.*f s", decimals, seconds);
  return text;
}

std::string DurationText(double seconds) { return SecondsText(seconds, seconds < 60 ? 2 : 0); }

std::string ClockText(double seconds, double span, int decimals) {
  const uint64_t perSecond = static_cast<uint64_t>(std::pow(10, decimals));
  const uint64_t units = static_cast<uint64_t>(std::llround(std::max(seconds, 0.0) * perSecond));
  const uint64_t whole = units / perSecond;
  std::string text = span >= 3600
      ? std::to_string(whole / 3600) + ":" + TwoDigits(whole / 60 % 60)
      : std::to_string(whole / 60);
  text += ":" + TwoDigits(whole % 60);
  if (decimals > 0) {
    const std::string fraction = std::to_string(perSecond + units % perSecond);
    text += "." + fraction.substr(1);
  }
  return text;
}

// A rate that three digits round up to 1000 of a unit is told in the next.
std::string RateText(double bitsPerSecond) {
  if (bitsPerSecond >= 999.5e3) return Printed("%.3g Mbit/s", bitsPerSecond / 1e6);
  if (bitsPerSecond >= 999.5) return Printed("%.3g kbit/s", bitsPerSecond / 1e3);
  return Printed("%.3g bit/s", bitsPerSecond);
}

std::string SizeText(uint64_t bytes) {
  const auto size = static_cast<double>(bytes);
  if (size >= 1e9) return Printed("%.2f GB", size / 1e9);
  if (size >= 1e6) return Printed("%.1f MB", size / 1e6);
  if (size >= 1e3) return Printed("%.1f kB", size / 1e3);
  return std::to_string(bytes) + " bytes";
}

double RoundUp(double value) {
  if (!(value > 0)) return 1;
  const double power = std::pow(10, std::floor(std::log10(value)));
  for (double multiple : {1.0, 2.0, 2.5, 5.0}) {
    if (multiple * power >= value) return multiple * power;
  }
  return 10 * power;
}

double AxisStep(double span) {
  for (double step : kSteps) {
    if (span / step <= kMostSteps) return step;
  }
  return kSecondsPerDay * RoundUp(span / kMostSteps / kSecondsPerDay);
}

}  // namespace kvlhost
