#include "host/plot/plot_band.h"

#include <algorithm>
#include <cmath>

#include "host/plot/plot_labels.h"

namespace kvlhost {
namespace {

constexpr char kGround[] = "#f3f4f6";
constexpr char kGrid[] = "#d5d8dd";
// Columns whose bars differ by less than this many pixels make one bar.
constexpr double kSameHeight = 0.05;

}  // namespace

PlotBand::PlotBand(const PlotCanvas& canvas, const StreamReport& stream,
                   const DeliveryTimeline::Row* row, double top)
    : canvas_(canvas), svg_(canvas.svg()), stream_(stream), row_(row), top_(top) {}

void PlotBand::DrawGround(const PlotCanvas& canvas, double top) {
  canvas.svg().Empty("rect", {{"x", PlotCanvas::kLeft}, {"y", top + kBarsTop},
                              {"width", PlotCanvas::kPlotWidth}, {"height", kBarsHeight},
                              {"fill", kGround}});
}

void PlotBand::Draw() {
  svg_.Open("g", {{"class", "band"}, {"data-stream", stream_.index}, {"data-kind", stream_.kind},
                  {"data-bytes", stream_.bytes}});
  Labels();
  const double rateTop = RoundUp(PeakRate());
  Scale(rateTop);
  if (row_) {
    Bars(rateTop);
    SyncTicks();
  }
  End();
  Seeks();
  svg_.Close();
}

void PlotBand::Labels() {
  canvas_.OpenHalo();
  svg_.Text("text", {{"x", PlotCanvas::kLeft}, {"y", top_ + 13}, {"font-size", 12},
                     {"font-weight", "bold"}, {"fill", PlotCanvas::StreamInk(stream_.index)}},
            "stream " + std::to_string(stream_.index) + " \u00b7 " + stream_.kind + " bit rate");
  svg_.Text("text", {{"x", PlotCanvas::kLeft + PlotCanvas::kPlotWidth}, {"y", top_ + 13},
                     {"font-size", 11}, {"text-anchor", "end"}, {"fill", PlotCanvas::kMuted}},
            EndText());
  svg_.Close();
}

std::string PlotBand::EndText() const {
  const std::string ending = stream_.ending.empty() ? "not read" : stream_.ending;
  if (stream_.chunks == 0) return "no chunk: " + ending;
  return "ended at " + PlotCanvas::TimeText(canvas_.Seconds(stream_.lastEnd)) + ": " + ending;
}

double PlotBand::PeakRate() const {
  if (!row_) return 0;
  const double peak = *std::max_element(row_->bytes.begin(), row_->bytes.end());
  return peak * 8 / canvas_.ColumnSeconds();
}

// Grid lines at half and full scale, labelled on the left.
void PlotBand::Scale(double rateTop) {
  svg_.Open("g", {{"font-size", 10}, {"fill", PlotCanvas::kMuted}, {"text-anchor", "end"}});
  for (double share : {0.0, 0.5, 1.0}) {
    const double y = BarsTop() + kBarsHeight * (1 - share);
    if (share > 0) {
      svg_.Empty("line", {{"x1", PlotCanvas::kLeft},
                          {"x2", PlotCanvas::kLeft + PlotCanvas::kPlotWidth},
                          {"y1", y}, {"y2", y}, {"stroke", kGrid}});
    }
    svg_.Text("text", {{"x", PlotCanvas::kLeft - 6}, {"y", y + 3.5}},
              share == 0 ? "0" : RateText(rateTop * share));
  }
  svg_.Close();
}

// A bar per run of columns alike in height: a frame that lasts several
// columns is one bar.
void PlotBand::Bars(double rateTop) {
  const std::vector<double>& columns = row_->bytes;
  const auto height = [&](double bytes, size_t count) {
    const double rate = bytes * 8 / (canvas_.ColumnSeconds() * static_cast<double>(count));
    return rate / rateTop * kBarsHeight;
  };
  svg_.Open("g", {{"class", "bars"}, {"fill", PlotCanvas::StreamInk(stream_.index)},
                  {"shape-rendering", "crispEdges"}});
  for (size_t first = 0; first < columns.size();) {
    if (columns[first] <= 0) {
      ++first;
      continue;
    }
    double bytes = columns[first];
    size_t end = first + 1;
    for (; end < columns.size() && columns[end] > 0; ++end) {
      if (std::fabs(height(columns[end], 1) - height(columns[first], 1)) >= kSameHeight) break;
      bytes += columns[end];
    }
    const double barHeight = height(bytes, end - first);
    svg_.Empty("rect", {{"x", canvas_.ColumnX(first)}, {"y", BarsTop() + kBarsHeight - barHeight},
                        {"width", canvas_.ColumnX(end) - canvas_.ColumnX(first)},
                        {"height", barHeight}, {"data-bytes", std::llround(bytes)}});
    first = end;
  }
  svg_.Close();
}

// Where every chunk is a sync chunk, as in audio, a tick per column would
// say nothing.
void PlotBand::SyncTicks() {
  if (!row_->sync.selective()) {
    const bool every = row_->sync.rule() == SyncChunks::Rule::kEveryChunk;
    canvas_.OpenHalo();
    svg_.Text("text", {{"x", PlotCanvas::kLeft + 4}, {"y", TicksTop() + 9}, {"font-size", 10},
                       {"font-style", "italic"}, {"fill", PlotCanvas::kMuted}},
              every ? "every chunk is a sync chunk" : "sync chunks can't be told in this format");
    svg_.Close();
    return;
  }
  svg_.Text("text", {{"x", PlotCanvas::kLeft - 6}, {"y", TicksTop() + 9}, {"font-size", 10},
                     {"fill", PlotCanvas::kMuted}, {"text-anchor", "end"}},
            "sync chunks");
  const double middle = (canvas_.ColumnX(1) - canvas_.ColumnX(0)) / 2;
  svg_.Open("g", {{"class", "sync"}, {"fill", PlotCanvas::kInk}});
  for (size_t column = 0; column < row_->syncChunks.size(); ++column) {
    if (row_->syncChunks[column] == 0) continue;
    svg_.Empty("rect", {{"x", canvas_.ColumnX(column) + middle - 0.75}, {"y", TicksTop()},
                        {"width", 1.5}, {"height", kTicksHeight},
                        {"data-chunks", row_->syncChunks[column]}});
  }
  svg_.Close();
}

void PlotBand::End() {
  if (stream_.chunks == 0) return;
  const double x = canvas_.TickX(stream_.lastEnd);
  svg_.Empty("line", {{"class", "end"}, {"x1", x}, {"x2", x}, {"y1", BarsTop()},
                      {"y2", TicksTop() + kTicksHeight}, {"stroke", PlotCanvas::kEndInk},
                      {"stroke-width", 2}, {"data-ticks", stream_.lastEnd}});
}

// Where it was asked to go, joined to where it landed, with a line down the
// bars from there.
void PlotBand::Seeks() {
  for (const SeekOutcome& seek : stream_.seeks) {
    const double asked = canvas_.TickX(seek.requested);
    svg_.Open("g", {{"class", "seek"}, {"stroke", PlotCanvas::kSeekInk},
                    {"fill", PlotCanvas::kSeekInk}});
    if (seek.result == 0) {
      const double landed = canvas_.TickX(seek.actual);
      svg_.Empty("line", {{"class", "seek-jump"}, {"x1", asked}, {"x2", landed},
                          {"y1", BarsTop() + 4}, {"y2", BarsTop() + 4}, {"stroke-width", 1.5}});
      svg_.Empty("line", {{"x1", landed}, {"x2", landed}, {"y1", BarsTop() + 9},
                          {"y2", BarsTop() + kBarsHeight}, {"stroke-dasharray", "3 2"}});
      SeekMark(landed, true, seek.actual);
    }
    SeekMark(asked, false, seek.requested);
    svg_.Close();
  }
}

// With a tooltip.
void PlotBand::SeekMark(double x, bool landed, uint32_t ticks) {
  svg_.Open("path", {{"class", landed ? "seek-landed" : "seek-asked"},
                     {"d", PlotCanvas::SeekMark(x, BarsTop() + (landed ? 1 : 0), landed)},
                     {"fill", landed ? PlotCanvas::kSeekInk : "none"}, {"stroke-width", 1.5},
                     {"data-ticks", ticks}});
  svg_.Text("title", {}, (landed ? "landed at " : "asked to go to ") +
                             PlotCanvas::TimeText(canvas_.Seconds(ticks)));
  svg_.Close();
}

}  // namespace kvlhost
