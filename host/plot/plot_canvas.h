#ifndef HOST_PLOT_PLOT_CANVAS_H_
#define HOST_PLOT_PLOT_CANVAS_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/play/title_time_scale.h"
#include "host/plot/svg_writer.h"

namespace kvlhost {

// What the parts of a delivery picture share: the SVG being written, the
// time axis, the horizontal layout and the inks.
class PlotCanvas {
 public:
  // Scale labels to the left of the plot, which has a pixel per column.
  static constexpr size_t kColumns = 1080;
  static constexpr double kLeft = 96;
  static constexpr double kPlotWidth = kColumns;

  static constexpr char kInk[] = "#222";
  static constexpr char kMuted[] = "#666";
  static constexpr char kChapterInk[] = "#6b6b6b";
  static constexpr char kSeekInk[] = "#8e2c9a";
  static constexpr char kEndInk[] = "#c0392b";

  // The axis spans `spanTicks`; a column lasts `columnTicks`.
  PlotCanvas(SvgWriter& svg, const TitleTimeScale& scale, uint64_t spanTicks,
             uint64_t columnTicks);

  SvgWriter& svg() const { return svg_; }
  double span() const { return span_; }  // seconds
  double Seconds(uint64_t ticks) const { return scale_.ToSeconds(ticks); }
  double X(double seconds) const { return kLeft + seconds / span_ * kPlotWidth; }
  double TickX(uint64_t ticks) const { return X(Seconds(ticks)); }
  double ColumnX(size_t column) const { return TickX(column * columnTicks_); }
  double ColumnSeconds() const { return Seconds(columnTicks_); }

  // A group whose texts have a white halo, clear of the chapter lines.
  void OpenHalo() const;

  static const char* StreamInk(size_t stream);
  // A seek mark: a triangle pointing down at `x` from `top`; where a seek
  // landed is a smaller one, which shows inside that of where it was asked to.
  static std::string SeekMark(double x, double top, bool landed);
  // "4.983 s", or on a clock from a minute on.
  static std::string TimeText(double seconds);

 private:
  SvgWriter& svg_;
  const TitleTimeScale& scale_;
  double span_;
  uint64_t columnTicks_;
};

}  // namespace kvlhost

#endif  // HOST_PLOT_PLOT_CANVAS_H_
