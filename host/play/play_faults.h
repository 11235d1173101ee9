#ifndef HOST_PLAY_PLAY_FAULTS_H_
#define HOST_PLAY_PLAY_FAULTS_H_

#include <vector>

#include "host/engine_side/host_error.h"
#include "host/play/play_report.h"

namespace kvlhost {

// What went wrong in a play that the contract has no word for, gravest
// first: the file changed under it (kFileChanged), then each stream that
// delivered nothing (kStreamSilent), one message a fault. Empty for a
// sound play.
std::vector<HostError> PlayFaults(const PlayReport& report);

}  // namespace kvlhost

#endif  // HOST_PLAY_PLAY_FAULTS_H_
