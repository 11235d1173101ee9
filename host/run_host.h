#ifndef HOST_RUN_HOST_H_
#define HOST_RUN_HOST_H_

#include <ostream>

namespace kvlhost {

// Where a run writes: `report` takes the report (or CSV, JSON, help) only;
// `errors` the one-line failures; `progress`, if set, a progress line.
struct HostStreams {
  std::ostream& report;
  std::ostream& errors;
  std::ostream* progress = nullptr;
};

// kvl-play with its command line: loads the module, plays or inspects, and
// returns the exit status. Never throws.
int RunHost(int argc, const char* const* argv, const HostStreams& streams);

}  // namespace kvlhost

#endif  // HOST_RUN_HOST_H_
