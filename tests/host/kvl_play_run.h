// kvl-play run in-process through the module that the build makes.
#ifndef MKVSOURCE_TESTS_HOST_KVL_PLAY_RUN_H_
#define MKVSOURCE_TESTS_HOST_KVL_PLAY_RUN_H_

#include <string>
#include <vector>

namespace hosttest {

struct HostRun {
  int status;
  std::string report;
  std::string errors;
};

// The module built beside the tests unless `args` name one with --module.
HostRun RunKvlPlay(std::vector<std::string> args);

}  // namespace hosttest

#endif  // MKVSOURCE_TESTS_HOST_KVL_PLAY_RUN_H_
