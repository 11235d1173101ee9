#ifndef HOST_PLAY_AVC_FACTS_H_
#define HOST_PLAY_AVC_FACTS_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "host/play/play_report.h"

namespace kvlhost {

// The facts of the sequence parameter set in an AVC track's codec private
// data (an AVCDecoderConfigurationRecord); none if the record doesn't parse.
std::optional<AvcFacts> ReadAvcFacts(const std::vector<uint8_t>& codecPrivate);

}  // namespace kvlhost

#endif  // HOST_PLAY_AVC_FACTS_H_
