#include "tests/host/host_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "host/run_host.h"

namespace hosttest {

HostRun RunKvlPlay(std::vector<std::string> args) {
  if (std::find(args.begin(), args.end(), "--module") == args.end()) {
    args.insert(args.begin(), MKVSOURCE_MODULE_PATH);
    args.insert(args.begin(), "--module");
  }
  args.insert(args.begin(), "kvl-play");
  std::vector<const char*> argv;
  for (const std::string& arg : args) argv.push_back(arg.c_str());
  std::ostringstream report, errors;
  HostRun run;
  run.status = kvlhost::RunHost(static_cast<int>(argv.size()), argv.data(), {report, errors});
  run.report = report.str();
  run.errors = errors.str();
  return run;
}

std::vector<PacketRow> ParsePacketRows(const std::string& csv) {
  std::istringstream in(csv);
  std::string line;
  std::getline(in, line);
  EXPECT_EQ(line, "stream,kind,track,start,duration,size,md5");
  std::vector<PacketRow> rows;
  while (std::getline(in, line)) {
    std::istringstream fields(line);
    PacketRow row;
    char comma;
    std::getline(fields >> row.stream >> comma, row.kind, ',');
    fields >> row.track >> comma >> row.start >> comma >> row.duration >> comma >> row.size >>
        comma >> row.md5;
    EXPECT_TRUE(fields) << line;
    rows.push_back(row);
  }
  return rows;
}

}  // namespace hosttest
