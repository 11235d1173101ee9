#include "host/play/play_faults.h"

#include <string>

namespace kvlhost {

std::vector<HostError> PlayFaults(const PlayReport& report) {
  std::vector<HostError> faults;
  if (!report.fileChange.empty()) {
    faults.emplace_back(kFileChanged,
                        "the file changed during the play (" + report.fileChange + "): " +
                            report.uri);
  }
  for (const StreamReport& stream : report.streams) {
    if (!stream.deliveredNothing) continue;
    faults.emplace_back(kStreamSilent, "stream " + std::to_string(stream.index) + " (" +
                                           stream.kind + ", track " +
                                           std::to_string(stream.track) +
                                           ") delivered nothing: " + report.uri);
  }
  return faults;
}

}  // namespace kvlhost
