#include "host/report/report_json.h"

namespace kvlhost {
namespace {

nlohmann::json AvcJson(const AvcFacts& avc) {
  nlohmann::json json = {{"profile", avc.profile},
                         {"level", avc.level},
                         {"coded_width", avc.codedWidth},
                         {"coded_height", avc.codedHeight},
                         {"cropped_width", avc.croppedWidth},
                         {"cropped_height", avc.croppedHeight}};
  if (avc.hrd) {
    json["peak_bitrate"] = avc.peakBitrate;
    json["buffer_size"] = avc.bufferSize;
  }
  return json;
}

nlohmann::json StreamJson(const StreamReport& stream) {
  nlohmann::json json = {{"index", stream.index},       {"uid", stream.uid},
                         {"kind", stream.kind},         {"track", stream.track},
                         {"format", stream.format},     {"duration", stream.duration},
                         {"codec_private_size", stream.codecPrivateSize},
                         {"chunks", stream.chunks},     {"bytes", stream.bytes},
                         {"ending", stream.ending},
                         {"delivered_nothing", stream.deliveredNothing}};
  if (stream.kind == "video") {
    json["width"] = stream.width;
    json["height"] = stream.height;
    json["pixel_aspect_x"] = stream.aspectX;
    json["pixel_aspect_y"] = stream.aspectY;
  } else if (stream.kind == "audio") {
    json["sample_rate"] = stream.sampleRate;
    json["channels"] = stream.channels;
  }
  if (stream.chunks > 0) {
    json["first_start"] = stream.firstStart;
    json["last_end"] = stream.lastEnd;
  }
  if (stream.avc) json["h264"] = AvcJson(*stream.avc);
  json["seeks"] = nlohmann::json::array();
  for (const SeekOutcome& seek : stream.seeks) {
    json["seeks"].push_back(
        {{"requested", seek.requested}, {"result", seek.result}, {"actual", seek.actual}});
  }
  return json;
}

nlohmann::json EngineJson(const ControlRecord& engine) {
  return {{"uids_issued", engine.uidsIssued},
          {"added", engine.added},
          {"enabled", engine.enabled},
          {"removed", engine.removed},
          {"titles_requested", engine.titlesRequested},
          {"open_title_results", engine.openTitleResults},
          {"titles_closed", engine.titlesClosed},
          {"seeks_to_time", engine.seeksToTime},
          {"data_not_ready", engine.notReady},
          {"language_queries", engine.languageQueries},
          {"state_queries", engine.stateQueries},
          {"sink_notifications", engine.sinkNotifications}};
}

}  // namespace

nlohmann::json ReportJson(const PlayReport& report) {
  nlohmann::json json = {{"module", report.module},
                         {"interfaces", report.interfaces},
                         {"mime_types", report.mimeTypes},
                         {"source", report.uri},
                         {"playable", report.playable}};
  json["refused"] = nlohmann::json::array();
  for (const RefusedFormat& format : report.refused) {
    json["refused"].push_back(
        {{"kind", format.kind}, {"format", format.format}, {"reason", format.reason}});
  }
  json["file_changed"] = !report.fileChange.empty();
  if (!report.fileChange.empty()) json["file_change"] = report.fileChange;
  if (!report.openResult) return json;
  json["open"] = *report.openResult;
  json["titles"] = report.titles;
  json["chapters"] = nlohmann::json::array();
  for (const ChapterReport& chapter : report.chapters) {
    json["chapters"].push_back(
        {{"uid", chapter.uid}, {"start", chapter.engineStart}, {"end", chapter.engineEnd}});
  }
  if (report.selectedChapter) json["selected_chapter"] = *report.selectedChapter;
  if (report.currentChapter) json["current_chapter"] = *report.currentChapter;
  json["streams"] = nlohmann::json::array();
  for (const StreamReport& stream : report.streams) json["streams"].push_back(StreamJson(stream));
  json["engine"] = EngineJson(report.engine);
  return json;
}

}  // namespace kvlhost
