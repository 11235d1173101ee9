#ifndef HOST_PLAY_TITLE_TIME_SCALE_H_
#define HOST_PLAY_TITLE_TIME_SCALE_H_

#include <cstdint>

namespace kvlhost {

// Converts between the engine's units of 10 microseconds and a title's
// timecode ticks. The contract never tells the engine the timecode scale,
// but it does tell the title's length in both units: the last chapter ends
// at the title's duration (engine units) and every stream's duration() is
// the same length in ticks. Times map by that proportion, taken downwards
// as the plug-in takes nanoseconds to ticks. When either length is 0 (a
// file without a duration) ticks are taken as milliseconds, the default
// scale.
class TitleTimeScale {
 public:
  TitleTimeScale(uint32_t engineLength, uint32_t tickLength);

  uint32_t ToTicks(uint32_t engineTime) const;
  uint32_t ToEngineTime(uint32_t ticks) const;
  // Unrounded and unbounded, for drawing.
  double ToSeconds(uint64_t ticks) const;
  static double EngineTimeToSeconds(uint32_t engineTime) {
    return engineTime / kEngineUnitsPerSecond;
  }

 private:
  static constexpr uint32_t kEngineUnitsPerMillisecond = 100;
  static constexpr double kEngineUnitsPerSecond = 100000;

  uint64_t engineLength_;
  uint64_t tickLength_;
};

}  // namespace kvlhost

#endif  // HOST_PLAY_TITLE_TIME_SCALE_H_
