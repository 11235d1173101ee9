#ifndef HOST_PLAY_PROGRESS_LINE_H_
#define HOST_PLAY_PROGRESS_LINE_H_

#include <cstdint>
#include <ostream>

namespace kvlhost {

// A line on a terminal that tells how far reading has come, rewritten in
// place whenever the whole percentage changes and ended when reading ends.
class ProgressLine {
 public:
  // Reading a title shorter than this passes too quickly to be worth a line.
  static constexpr uint32_t kShortestEngineLength = 10 * 100000;  // 10 s

  // `out`: where the line goes, none if null; `engineLength`: the title's
  // length in engine units, to leave short titles alone; `tickLength`: the
  // same in ticks, for the percentage.
  ProgressLine(std::ostream* out, uint32_t engineLength, uint32_t tickLength);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void Update(uint32_t ticks);

 private:
  std::ostream* out_;
  uint32_t tickLength_;
  int shown_ = -1;
};

}  // namespace kvlhost

#endif  // HOST_PLAY_PROGRESS_LINE_H_
