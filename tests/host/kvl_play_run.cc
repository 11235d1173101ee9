#include "tests/host/kvl_play_run.h"

#include <algorithm>
#include <sstream>

#include "host/run_host.h"

namespace hosttest {

HostRun RunKvlPlay(std::vector<std::string> args) {
  if (std::find(args.begin(), args.end(), "--module") == args.end())
    args.insert(args.begin(), {"--module", MKVSOURCE_MODULE_PATH});
  args.insert(args.begin(), "kvl-play");
  std::vector<const char*> argv;
  for (const std::string& arg : args) argv.push_back(arg.c_str());
  std::ostringstream report, errors;
  const int status = kvlhost::RunHost(static_cast<int>(argv.size()), argv.data(), {report, errors});
  return {status, report.str(), errors.str()};
}

}  // namespace hosttest
