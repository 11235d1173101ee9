#include "host/play/progress_line.h"

#include <algorithm>

namespace kvlhost {

ProgressLine::ProgressLine(std::ostream* out, uint32_t engineLength, uint32_t tickLength)
    : out_(tickLength > 0 && engineLength >= kShortestEngineLength ? out : nullptr),
      tickLength_(tickLength) {}

ProgressLine::~ProgressLine() {
  if (out_ && shown_ >= 0) *out_ << '\n' << std::flush;
}

void ProgressLine::Update(uint32_t ticks) {
  if (!out_) return;
  const int percent =
      static_cast<int>(std::min<uint64_t>(100, uint64_t{ticks} * 100 / tickLength_));
  if (percent == shown_) return;
  shown_ = percent;
  *out_ << "\rreading " << percent << "% (" << ticks << " of " << tickLength_ << " ticks)"
       << std::flush;
}

}  // namespace kvlhost
