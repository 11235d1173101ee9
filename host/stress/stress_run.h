#ifndef HOST_STRESS_STRESS_RUN_H_
#define HOST_STRESS_STRESS_RUN_H_

#include <cstdint>
#include <string>
#include <vector>

#include "host/engine_side/host_control.h"
#include "host/engine_side/host_error.h"
#include "host/engine_side/plugin_line_tap.h"
#include "host/engine_side/plugin_module.h"
#include "host/play/play_report.h"

namespace kvlhost {

struct StressPlan {
  std::string uri;
  uint64_t seed = 0;
  uint32_t seconds = 10;
  // The most calls the control thread makes; the readers follow it.
  uint64_t controlCalls = 1000000;
};

struct StressSummary {
  uint64_t calls = 0;  // into the plug-in, from every thread
  uint64_t reads = 0;
  uint64_t seeks = 0;
  PluginLineCounts lines;
  size_t brokenCount = 0;
  std::vector<std::string> broken;  // the first few
};

// "stress: seed S: N calls (R reads, K seeks); plug-in lines: ...; no rule
// broken", or the number of broken rules and the first.
std::string SummaryLine(const StressPlan& plan, const StressSummary& summary);

// Drives the plug-in as an engine does, from several threads at once, and
// checks what must hold whatever the interleaving. After the engine's open,
// each stream is read once to its end as the reference and opened again.
// Then one thread per stream reads, waiting at an end or at "nothing until
// a seek" for the next change, while this thread makes random calls with
// the plan's seed: seeks (exact and not), read speeds, sync points, chapter
// queries and selections, the current chapter. When the plan's calls or
// time are spent it tells the readers to stop and, while they do, closes
// the streams, the title and the file. The plug-in's lines of each call are
// counted, not printed. Returns Player::Open's failures, else
// kStressRuleBroken or kPlayed.
ExitStatus RunStress(PluginModule& module, HostControl& control, const StressPlan& plan,
                     PlayReport& report, StressSummary& summary);

}  // namespace kvlhost

#endif  // HOST_STRESS_STRESS_RUN_H_
