#include "host/plot/delivery_plot.h"

#include <algorithm>
#include <numeric>
#include <string>

#include "host/play/player.h"
#include "host/plot/plot_band.h"
#include "host/plot/plot_canvas.h"
#include "host/plot/plot_labels.h"
#include "host/plot/svg_writer.h"

namespace kvlhost {
namespace {

constexpr double kWidth = 1200;
constexpr double kMargin = 16;
constexpr double kFirstStreamLine = 54;
constexpr double kHeadingLine = 19;
constexpr double kChapterRow = 28;
constexpr double kAxisRoom = 66;
constexpr char kFont[] = "DejaVu Sans, Verdana, Arial, sans-serif";

// The name after the URI's last slash, unescaped as the URI is.
std::string FileName(const std::string& uri) {
  const size_t slash = uri.find_last_of('/');
  return slash == std::string::npos ? uri : uri.substr(slash + 1);
}

// The longest time the picture must show: durations, ends and seeks.
uint64_t SpanTicks(const PlayReport& report) {
  uint64_t span = 1;
  for (const StreamReport& stream : report.streams) {
    span = std::max<uint64_t>({span, stream.duration, stream.lastEnd});
    for (const SeekOutcome& seek : stream.seeks)
      span = std::max<uint64_t>({span, seek.requested, seek.actual});
  }
  return span;
}

// Where the picture's parts stand, from the top.
struct Layout {
  explicit Layout(size_t streams)
      : chapters(kFirstStreamLine + kHeadingLine * static_cast<double>(streams)),
        bands(chapters + kChapterRow),
        axis(bands + PlotBand::kHeight * static_cast<double>(streams)),
        height(axis + kAxisRoom) {}

  double BandTop(size_t band) const {
    return bands + PlotBand::kHeight * static_cast<double>(band);
  }

  double chapters;
  double bands;
  double axis;
  double height;
};

// The heading, the bands, the chapter lines over the bands' ground, the
// time axis and the legend.
class DeliveryPlot {
 public:
  DeliveryPlot(const PlayReport& report, const DeliveryTimeline& timeline,
               const PlotCanvas& canvas, const Layout& layout)
      : report_(report), timeline_(timeline), canvas_(canvas), svg_(canvas.svg()),
        layout_(layout) {}

  void Draw();

 private:
  void Heading();
  std::string StreamLine(const StreamReport& stream) const;
  void Chapters();
  void Axis();
  void Legend();
  double LegendItem(double x, double y, const std::string& text);

  const PlayReport& report_;
  const DeliveryTimeline& timeline_;
  const PlotCanvas& canvas_;
  SvgWriter& svg_;
  const Layout& layout_;
};

void DeliveryPlot::Draw() {
  svg_.Empty("rect", {{"width", "100%"}, {"height", "100%"}, {"fill", "#fff"}});
  Heading();
  for (size_t i = 0; i < report_.streams.size(); ++i)
    PlotBand::DrawGround(canvas_, layout_.BandTop(i));
  Chapters();
  for (size_t i = 0; i < report_.streams.size(); ++i) {
    const StreamReport& stream = report_.streams[i];
    PlotBand(canvas_, stream, timeline_.row(stream.index), layout_.BandTop(i)).Draw();
  }
  Axis();
  Legend();
}

void DeliveryPlot::Heading() {
  const uint32_t length = report_.streams.empty() ? 0 : report_.streams[0].duration;
  svg_.Open("text", {{"x", kMargin}, {"y", 30}, {"font-size", 18}, {"fill", PlotCanvas::kInk}});
  svg_.Text("tspan", {{"font-weight", "bold"}}, FileName(report_.uri));
  svg_.Text("tspan", {{"dx", 10}, {"fill", PlotCanvas::kMuted}},
            DurationText(canvas_.Seconds(length)) + ", " +
                std::to_string(report_.chapters.size()) + " chapters, as MKVSource delivered it");
  svg_.Close();
  for (size_t i = 0; i < report_.streams.size(); ++i) {
    const StreamReport& stream = report_.streams[i];
    const double baseline = kFirstStreamLine + kHeadingLine * static_cast<double>(i);
    svg_.Empty("rect", {{"x", kMargin}, {"y", baseline - 10}, {"width", 11}, {"height", 11},
                        {"fill", PlotCanvas::StreamInk(stream.index)}});
    svg_.Text("text", {{"x", kMargin + 18}, {"y", baseline}, {"font-size", 13},
                       {"fill", PlotCanvas::kInk}},
              StreamLine(stream));
  }
}

// Kind, format, size or sound; chunks, bytes and the mean rate over the
// time they cover; each seek.
std::string DeliveryPlot::StreamLine(const StreamReport& stream) const {
  std::string line = "stream " + std::to_string(stream.index) + ": " + stream.kind + ", " +
                     (stream.format.empty() ? "format unknown" : stream.format) + ", ";
  if (stream.kind == "video") {
    line += std::to_string(stream.width) + "\u00d7" + std::to_string(stream.height);
  } else {
    line += std::to_string(stream.sampleRate) + " Hz, " + std::to_string(stream.channels) +
            (stream.channels == 1 ? " channel" : " channels");
  }
  line += " \u2014 " + std::to_string(stream.chunks) + " chunks";
  const DeliveryTimeline::Row* row = timeline_.row(stream.index);
  if (row && row->sync.selective()) {
    const uint64_t sync = std::accumulate(row->syncChunks.begin(), row->syncChunks.end(),
                                          uint64_t{0});
    line += " (" + std::to_string(sync) + " sync)";
  }
  line += ", " + SizeText(stream.bytes);
  const uint32_t first = std::min(stream.firstStart, stream.lastEnd);
  const double covered = canvas_.Seconds(stream.lastEnd - first);
  if (covered > 0) line += ", " + RateText(static_cast<double>(stream.bytes) * 8 / covered);
  for (const SeekOutcome& seek : stream.seeks) {
    line += "; asked to " + PlotCanvas::TimeText(canvas_.Seconds(seek.requested));
    line += seek.result == 0
        ? ", landed at " + PlotCanvas::TimeText(canvas_.Seconds(seek.actual))
        : ", failed with " + std::to_string(seek.result);
  }
  return line;
}

void DeliveryPlot::Chapters() {
  const double top = layout_.chapters;
  svg_.Open("g", {{"class", "chapters"}, {"font-size", 11}, {"font-weight", "bold"},
                  {"text-anchor", "middle"}});
  for (size_t i = 0; i < report_.chapters.size(); ++i) {
    const uint32_t start = report_.chapters[i].engineStart;
    const double x = canvas_.X(TitleTimeScale::EngineTimeToSeconds(start));
    svg_.Empty("line", {{"x1", x}, {"x2", x}, {"y1", top + 18}, {"y2", layout_.axis},
                        {"stroke", PlotCanvas::kChapterInk}, {"stroke-dasharray", "4 3"},
                        {"data-chapter", i}, {"data-start", start}});
    svg_.Empty("circle", {{"cx", x}, {"cy", top + 9}, {"r", 9}, {"fill", PlotCanvas::kChapterInk}});
    svg_.Text("text", {{"x", x}, {"y", top + 13}, {"fill", "#fff"}}, std::to_string(i));
  }
  svg_.Close();
}

void DeliveryPlot::Axis() {
  const double y = layout_.axis;
  const double span = canvas_.span();
  const double step = AxisStep(span);
  const int decimals = step < 1 ? 1 : 0;
  svg_.Open("g", {{"class", "axis"}, {"font-size", 11}, {"fill", PlotCanvas::kInk},
                  {"stroke", PlotCanvas::kInk}, {"text-anchor", "middle"}});
  svg_.Empty("line", {{"x1", PlotCanvas::kLeft}, {"x2", PlotCanvas::kLeft + PlotCanvas::kPlotWidth},
                      {"y1", y}, {"y2", y}});
  for (int i = 0; i * step <= span * (1 + 1e-9); ++i) {
    const double seconds = i * step;
    const double x = canvas_.X(seconds);
    svg_.Empty("line", {{"x1", x}, {"x2", x}, {"y1", y}, {"y2", y + 5},
                        {"data-seconds", seconds}});
    svg_.Text("text", {{"x", x}, {"y", y + 18}, {"stroke", "none"}},
              ClockText(seconds, span, decimals));
  }
  svg_.Text("text", {{"x", PlotCanvas::kLeft - 8}, {"y", y + 4}, {"stroke", "none"},
                     {"fill", PlotCanvas::kMuted}, {"font-size", 10}, {"text-anchor", "end"}},
            span >= 3600 ? "time (h:mm:ss)" : "time (m:ss)");
  svg_.Close();
}

void DeliveryPlot::Legend() {
  const double y = layout_.axis + 48;
  svg_.Open("g", {{"class", "legend"}, {"font-size", 11}, {"fill", PlotCanvas::kInk}});
  double x = PlotCanvas::kLeft;
  for (size_t i = 0; i < std::min<size_t>(report_.streams.size(), 3); ++i) {
    svg_.Empty("rect", {{"x", x + 5 * static_cast<double>(i)}, {"y", y - 10}, {"width", 4},
                        {"height", 11}, {"fill", PlotCanvas::StreamInk(report_.streams[i].index)}});
  }
  x = LegendItem(x + 16, y, "bit rate, bytes over the time each chunk lasts");
  svg_.Empty("rect", {{"x", x}, {"y", y - 10}, {"width", 1.5}, {"height", PlotBand::kTicksHeight}});
  x = LegendItem(x + 6, y, "sync chunk (key frame)");
  svg_.Empty("rect", {{"x", x}, {"y", y - 11}, {"width", 2}, {"height", 13},
                      {"fill", PlotCanvas::kEndInk}});
  x = LegendItem(x + 7, y, "stream ended");
  svg_.Empty("circle", {{"cx", x + 6}, {"cy", y - 4}, {"r", 6}, {"fill", PlotCanvas::kChapterInk}});
  x = LegendItem(x + 16, y, "chapter start");
  const bool seeks = std::any_of(report_.streams.begin(), report_.streams.end(),
                                 [](const StreamReport& stream) { return !stream.seeks.empty(); });
  if (seeks) {
    svg_.Empty("path", {{"d", PlotCanvas::SeekMark(x + 6, y - 10, false)}, {"fill", "none"},
                        {"stroke", PlotCanvas::kSeekInk}, {"stroke-width", 1.5}});
    x = LegendItem(x + 18, y, "seek asked");
    svg_.Empty("path", {{"d", PlotCanvas::SeekMark(x + 6, y - 9, true)},
                        {"fill", PlotCanvas::kSeekInk}});
    LegendItem(x + 16, y, "where it landed");
  }
  svg_.Close();
}

// Writes the item's text at `x` and returns where the next item goes.
double DeliveryPlot::LegendItem(double x, double y, const std::string& text) {
  svg_.Text("text", {{"x", x}, {"y", y}}, text);
  return x + 6.2 * static_cast<double>(text.size()) + 24;
}

}  // namespace

void DrawDelivery(const PlayReport& report, const DeliveryTimeline& timeline, PendingFile& file) {
  const Layout layout(report.streams.size());
  const std::string viewBox =
      "0 0 " + SvgValue(kWidth).text() + " " + SvgValue(layout.height).text();
  SvgWriter svg(file.descriptor(), file.path(),
                {{"width", kWidth}, {"height", layout.height}, {"viewBox", viewBox},
                 {"font-family", kFont}});
  svg.Text("title", {}, FileName(report.uri) + ": what MKVSource delivered");
  const TitleTimeScale scale = ReportedTimeScale(report);
  const PlotCanvas canvas(svg, scale, SpanTicks(report), timeline.columnTicks());
  DeliveryPlot(report, timeline, canvas, layout).Draw();
  svg.Finish();
}

}  // namespace kvlhost
