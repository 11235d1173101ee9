#ifndef HOST_ENGINE_SIDE_PLUGIN_LINE_TAP_H_
#define HOST_ENGINE_SIDE_PLUGIN_LINE_TAP_H_

#include <cstdint>
#include <string>
#include <thread>

namespace kvlhost {

// The plug-in's lines that each call of a kind prints: thousands a second
// under engine-style stress.
struct PluginLineCounts {
  uint64_t seek = 0;        // "... Stream N: seeked to" and "seeked/scanned to"
  uint64_t reset = 0;       // "Reset ... Stream N"
  uint64_t syncPoint = 0;   // "... got sync point" and "assumed zero sync point"
  uint64_t chapter = 0;     // "couldn't find chapter by time."
};

// "N seek, N reset, N sync point and N chapter lines".
std::string CountsText(const PluginLineCounts& counts);

// While it lives, the process's standard output, where the plug-in prints,
// runs through a pipe: the per-call lines are counted and the others go on
// to where standard output went before, as they come.
class PluginLineTap {
 public:
  // Throws a HostError with kHostFailure if standard output can't be taken.
  PluginLineTap();
  ~PluginLineTap();
  PluginLineTap(const PluginLineTap&) = delete;
  PluginLineTap& operator=(const PluginLineTap&) = delete;

  // Gives standard output back, once every line written so far has passed,
  // and returns the counts. Nothing may print on another thread meanwhile.
  const PluginLineCounts& Stop();

 private:
  void Pass();
  void Take(const std::string& line);

  int original_ = -1;  // standard output as it was
  int pipe_ = -1;      // the reading end
  std::thread passer_;
  std::string partial_;
  PluginLineCounts counts_;
};

}  // namespace kvlhost

#endif  // HOST_ENGINE_SIDE_PLUGIN_LINE_TAP_H_
