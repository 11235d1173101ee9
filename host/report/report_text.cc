#include "host/report/report_text.h"

#include <string>
#include <vector>

namespace kvlhost {
namespace {

template <typename T>
std::string Joined(const std::vector<T>& values) {
  std::string text;
  for (const T& value : values) {
    if (!text.empty()) text += ", ";
    if constexpr (std::is_same_v<T, std::string>)
      text += value;
    else
      text += std::to_string(value);
  }
  return text.empty() ? "none" : text;
}

void WriteVerdict(const PlayReport& report, std::ostream& out) {
  out << "module: " << report.module << '\n'
      << "interfaces: " << Joined(report.interfaces) << '\n'
      << "mime types: " << Joined(report.mimeTypes) << '\n'
      << "source: " << report.uri << '\n'
      << "playable: " << (report.playable ? "yes" : "no") << '\n';
  for (const RefusedFormat& format : report.refused) {
    out << "refused: " << format.kind << " format \"" << format.format << "\" (reason "
        << format.reason << ")\n";
  }
  if (report.openResult) out << "open: " << *report.openResult << '\n';
}

void WriteTitle(const PlayReport& report, std::ostream& out) {
  if (report.titles.empty()) return;
  out << "titles: " << Joined(report.titles) << '\n';
  for (size_t i = 0; i < report.chapters.size(); ++i) {
    const ChapterReport& chapter = report.chapters[i];
    out << "  chapter " << i << ": uid " << chapter.uid << ", " << chapter.engineStart << " to "
        << chapter.engineEnd << " (10 us units)\n";
  }
  if (report.selectedChapter) {
    out << "selected chapter " << *report.selectedChapter << ", now in chapter uid "
        << (report.currentChapter ? std::to_string(*report.currentChapter) : "none") << '\n';
  }
}

void WriteAvc(const AvcFacts& avc, std::ostream& out) {
  out << "  H.264: profile " << avc.profile << ", level " << avc.level << ", coded "
      << avc.codedWidth << 'x' << avc.codedHeight << ", cropped " << avc.croppedWidth << 'x'
      << avc.croppedHeight;
  if (avc.hrd)
    out << ", peak bit rate " << avc.peakBitrate << " bit/s, buffer " << avc.bufferSize << " bits";
  else
    out << ", no HRD parameters";
  out << '\n';
}

void WriteStream(const StreamReport& stream, std::ostream& out) {
  out << "stream " << stream.index << ": " << stream.kind << ", track " << stream.track
      << ", uid " << stream.uid << ", format " << stream.format;
  if (stream.kind == "video") {
    out << ", " << stream.width << 'x' << stream.height << ", pixel aspect ";
    if (stream.aspectX == 0 || stream.aspectY == 0)
      out << "unknown";
    else
      out << stream.aspectX << ':' << stream.aspectY;
  } else if (stream.kind == "audio") {
    out << ", " << stream.sampleRate << " Hz, " << stream.channels << " channels";
  }
  out << ", duration " << stream.duration << " ticks, codec private " << stream.codecPrivateSize
      << " bytes\n";
  if (stream.avc) WriteAvc(*stream.avc, out);
  for (const SeekOutcome& seek : stream.seeks) {
    out << "  seek to " << seek.requested << ": result " << seek.result << ", actual "
        << seek.actual << '\n';
  }
  out << "  " << stream.chunks << " chunks, " << stream.bytes << " bytes";
  if (stream.chunks > 0)
    out << ", first start " << stream.firstStart << ", last end " << stream.lastEnd;
  out << ", " << (stream.ending.empty() ? "not read" : stream.ending) << '\n';
}

void WriteEngine(const ControlRecord& engine, std::ostream& out) {
  out << "engine: " << engine.uidsIssued << " UIDs issued; streams added "
      << Joined(engine.added) << ", enabled " << Joined(engine.enabled) << ", removed "
      << Joined(engine.removed) << "; titles requested " << Joined(engine.titlesRequested)
      << " (openTitle " << Joined(engine.openTitleResults) << "), closed "
      << Joined(engine.titlesClosed) << "; seeks to time " << Joined(engine.seeksToTime)
      << "; data not ready " << Joined(engine.notReady) << '\n';
}

}  // namespace

void WriteTextReport(const PlayReport& report, std::ostream& out) {
  WriteVerdict(report, out);
  WriteTitle(report, out);
  for (const StreamReport& stream : report.streams) WriteStream(stream, out);
  if (report.openResult) WriteEngine(report.engine, out);
}

}  // namespace kvlhost
