// Runs kvl-play's code in-process and keeps what it wrote.
#ifndef MKVSOURCE_TESTS_HOST_HOST_RUN_H_
#define MKVSOURCE_TESTS_HOST_HOST_RUN_H_

#include <string>
#include <vector>

namespace hosttest {

struct HostRun {
  int status = -1;
  std::string report;
  std::string errors;
};

// kvl-play with `args`; the module built beside the tests unless `args`
// name one with --module.
HostRun RunKvlPlay(std::vector<std::string> args);

// The columns of --packets output.
enum PacketColumn { kStream, kKind, kTrack, kStart, kDuration, kSize, kMd5 };

}  // namespace hosttest

#endif  // MKVSOURCE_TESTS_HOST_HOST_RUN_H_
