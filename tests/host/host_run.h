// Runs kvl-play's code in-process and parses what it wrote.
#ifndef MKVSOURCE_TESTS_HOST_HOST_RUN_H_
#define MKVSOURCE_TESTS_HOST_HOST_RUN_H_

#include <cstdint>
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

// One row of --packets output.
struct PacketRow {
  size_t stream = 0;
  std::string kind;
  unsigned int track = 0;
  uint32_t start = 0;
  uint32_t duration = 0;
  size_t size = 0;
  std::string md5;
};

// The rows under the header; fails the test if the header differs.
std::vector<PacketRow> ParsePacketRows(const std::string& csv);

}  // namespace hosttest

#endif  // MKVSOURCE_TESTS_HOST_HOST_RUN_H_
