#include "host/plot/plot_canvas.h"

#include <iterator>

#include "host/plot/plot_labels.h"

namespace kvlhost {
namespace {

constexpr const char* kStreamInks[] = {"#3a6ea5", "#e07b1f", "#3f9e5a",
                                       "#b0413e", "#7b5ea7", "#8c6a3f"};

}  // namespace

PlotCanvas::PlotCanvas(SvgWriter& svg, const TitleTimeScale& scale, uint64_t spanTicks,
                       uint64_t columnTicks)
    : svg_(svg), scale_(scale), span_(scale.ToSeconds(spanTicks)), columnTicks_(columnTicks) {}

void PlotCanvas::OpenHalo() const {
  svg_.Open("g", {{"stroke", "#fff"}, {"stroke-width", 4}, {"paint-order", "stroke"},
                  {"stroke-linejoin", "round"}});
}

const char* PlotCanvas::StreamInk(size_t stream) {
  return kStreamInks[stream % std::size(kStreamInks)];
}

std::string PlotCanvas::SeekMark(double x, double top, bool landed) {
  const double half = landed ? 4 : 6;
  return "M" + SvgValue(x - half).text() + " " + SvgValue(top).text() + "h" +
         SvgValue(2 * half).text() + "l-" + SvgValue(half).text() + " " +
         SvgValue(1.6 * half).text() + "z";
}

std::string PlotCanvas::TimeText(double seconds) { return SecondsText(seconds, 3); }

}  // namespace kvlhost
