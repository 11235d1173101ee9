#include "host/play/title_time_scale.h"

#include <limits>

namespace kvlhost {
namespace {

// value * numerator / denominator, taken downwards, held within 32 bits.
uint32_t Scaled(uint64_t value, uint64_t numerator, uint64_t denominator) {
  const unsigned __int128 product = static_cast<unsigned __int128>(value) * numerator;
  const unsigned __int128 result = product / denominator;
  const uint32_t most = std::numeric_limits<uint32_t>::max();
  return result > most ? most : static_cast<uint32_t>(result);
}

}  // namespace

TitleTimeScale::TitleTimeScale(uint32_t engineLength, uint32_t tickLength)
    : engineLength_(engineLength), tickLength_(tickLength) {
  if (engineLength_ == 0 || tickLength_ == 0) {
    engineLength_ = kEngineUnitsPerMillisecond;
    tickLength_ = 1;
  }
}

uint32_t TitleTimeScale::ToTicks(uint32_t engineTime) const {
  return Scaled(engineTime, tickLength_, engineLength_);
}

uint32_t TitleTimeScale::ToEngineTime(uint32_t ticks) const {
  return Scaled(ticks, engineLength_, tickLength_);
}

double TitleTimeScale::ToSeconds(uint64_t ticks) const {
  return static_cast<double>(ticks) * static_cast<double>(engineLength_) /
         static_cast<double>(tickLength_) / kEngineUnitsPerSecond;
}

}  // namespace kvlhost
