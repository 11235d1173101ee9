#ifndef HOST_PLOT_PLOT_BAND_H_
#define HOST_PLOT_PLOT_BAND_H_

#include "host/play/play_report.h"
#include "host/plot/delivery_timeline.h"
#include "host/plot/plot_canvas.h"

namespace kvlhost {

// One stream's band of a delivery picture, `top` down: a label row; the bit
// rate as bars over a scale; a tick per column with sync chunks; where the
// stream ended; where its seeks were asked to go and where they landed. The
// band's ground is drawn apart, under the chapter lines. `row` may be null.
class PlotBand {
 public:
  static constexpr double kBarsTop = 20;
  static constexpr double kBarsHeight = 96;
  static constexpr double kTicksHeight = 10;
  static constexpr double kHeight = kBarsTop + kBarsHeight + 28;

  PlotBand(const PlotCanvas& canvas, const StreamReport& stream,
           const DeliveryTimeline::Row* row, double top);

  static void DrawGround(const PlotCanvas& canvas, double top);
  void Draw();

 private:
  double BarsTop() const { return top_ + kBarsTop; }
  double TicksTop() const { return BarsTop() + kBarsHeight + 4; }

  void Labels();
  std::string EndText() const;
  double PeakRate() const;
  void Scale(double rateTop);
  void Bars(double rateTop);
  void SyncTicks();
  void End();
  void Seeks();
  void SeekMark(double x, bool landed, uint32_t ticks);

  const PlotCanvas& canvas_;
  SvgWriter& svg_;
  const StreamReport& stream_;
  const DeliveryTimeline::Row* row_;
  const double top_;
};

}  // namespace kvlhost

#endif  // HOST_PLOT_PLOT_BAND_H_
