// The human-readable report states, line by line, what the JSON report of the
// same play holds, for every committed file and a seek and a chapter.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/host/kvl_play_run.h"
#include "tests/support/media_files.h"

namespace hosttest {
namespace {

using nlohmann::json;

std::string Text(const json& value) {
  return value.is_string() ? value.get<std::string>() : value.dump();
}

std::vector<std::string> ExpectedLines(const json& report) {
  std::vector<std::string> lines = {"source: " + Text(report["source"]) + "\n",
                                    "open: " + Text(report["open"]) + "\n"};
  for (size_t i = 0; i < report["chapters"].size(); ++i) {
    const json& chapter = report["chapters"][i];
    lines.push_back("  chapter " + std::to_string(i) + ": uid " + Text(chapter["uid"]) + ", " +
                    Text(chapter["start"]) + " to " + Text(chapter["end"]) + " (10 us units)\n");
  }
  for (const json& stream : report["streams"]) {
    lines.push_back("stream " + Text(stream["index"]) + ": " + Text(stream["kind"]) +
                    ", track " + Text(stream["track"]) + ", uid " + Text(stream["uid"]) +
                    ", format " + Text(stream["format"]) + ", ");
    lines.push_back(", duration " + Text(stream["duration"]) + " ticks, codec private " +
                    Text(stream["codec_private_size"]) + " bytes\n");
    for (const json& seek : stream["seeks"]) {
      lines.push_back("  seek to " + Text(seek["requested"]) + ": result " +
                      Text(seek["result"]) + ", actual " + Text(seek["actual"]) + "\n");
    }
    std::string delivery = "  " + Text(stream["chunks"]) + " chunks, " + Text(stream["bytes"]) +
                           " bytes";
    if (stream.contains("first_start")) {
      delivery += ", first start " + Text(stream["first_start"]) + ", last end " +
                  Text(stream["last_end"]);
    }
    lines.push_back(delivery + ", " + Text(stream["ending"]) + "\n");
  }
  return lines;
}

class TextReport : public testing::TestWithParam<const char*> {};

TEST_P(TextReport, SaysWhatTheJsonSays) {
  const std::string path = mkvtest::MediaPath(GetParam());
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{}, {"--seek", "1000", "--exact"}, {"--chapter", "3"}}) {
    SCOPED_TRACE(testing::PrintToString(options));
    std::vector<std::string> args = options;
    args.push_back(path);
    const HostRun text = RunKvlPlay(args);
    args.insert(args.begin(), "--json");
    const HostRun structured = RunKvlPlay(args);
    ASSERT_EQ(text.status, 0) << text.errors;
    for (const std::string& line : ExpectedLines(json::parse(structured.report)))
      EXPECT_NE(text.report.find(line), std::string::npos) << line << text.report;
  }
}

INSTANTIATE_TEST_SUITE_P(CommittedFiles, TextReport,
                         testing::ValuesIn(kPlayedMedia));

}  // namespace
}  // namespace hosttest
