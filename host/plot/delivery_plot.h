#ifndef HOST_PLOT_DELIVERY_PLOT_H_
#define HOST_PLOT_DELIVERY_PLOT_H_

#include <cstddef>

#include "host/play/play_report.h"
#include "host/plot/delivery_timeline.h"
#include "host/plot/pending_file.h"
#include "host/plot/plot_canvas.h"

namespace kvlhost {

// The columns of the picture's time axis, a pixel each: a timeline to be
// drawn gathers into this many, whatever the file's length.
constexpr size_t kPlotColumns = PlotCanvas::kColumns;

// Draws what the plug-in delivered as one self-contained SVG into `file`,
// which the caller commits: a heading with the file's name, its length and
// its streams; a band per stream on a shared time axis, with the bit rate as
// bars, a tick per column with sync chunks, and where the stream ended; the
// chapters' starts; where seeks were asked to go and where they landed; a
// legend. Elements carry what they stand for in data- attributes (bytes,
// sync chunks, ticks, engine times), for readers other than the eye.
// Throws a HostError with kHostFailure if the file can't be written.
void DrawDelivery(const PlayReport& report, const DeliveryTimeline& timeline, PendingFile& file);

}  // namespace kvlhost

#endif  // HOST_PLOT_DELIVERY_PLOT_H_
