// kvl-play run in-process through the built module: statuses, one-line errors,
// report forms, options, and every committed file frame by frame.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>

#include "tests/codec/avc_file_facts.h"
#include "tests/host/kvl_play_run.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_file.h"

namespace hosttest {
namespace {

using mkvtest::CsvRow;

const std::string kSample = mkvtest::MediaPath("sample");

enum PacketColumn { kStream, kKind, kTrack, kStart, kDuration, kSize, kMd5 };

// `shows`: text the report or the error line must hold.
TEST(RunHost, StatusPerKindOfInput) {
  const std::string size = std::to_string(std::filesystem::file_size(kSample));
  const std::string cwd = std::filesystem::current_path().string();
  const struct {
    std::vector<std::string> args;
    int status;
    std::string shows;
  } cases[] = {
      {{mkvtest::WriteTemp({'n', 'o', 't', '\n'})}, 1, ""},  // not Matroska
      // Paths become file URIs, made absolute and normal but not escaped; schemes stay.
      {{"/no/../no/./a b%20c.mkv"}, 7, "cannot read /no/a b%20c.mkv: No such file"},
      // No scheme before a dot.
      {{"./x:y.mkv"}, 7, "cannot read " + cwd + "/x:y.mkv: No such file"},
      {{"http://example.invalid/a.mkv"}, 3, "cannot open: http://example.invalid/a.mkv\n"},
      {{"--refuse", "", kSample}, 1, "refused: video format \"\" (reason 20)"},  // AVC asks
      {{"--refuse", "H265", kSample}, 0, ""},
      {{mkvtest::MediaPath("aac_only")}, 1, "not playable: file://"},
      {{"--refuse", "H265", mkvtest::MediaPath("hevc_mp3")}, 1, "refused video format \"H265\""},
      {{"--inspect", kSample}, 0, "size: " + size + "\n"},
      {{"--inspect", "http://example.invalid/a.mkv"}, 3, ""},
      {{"--inspect", ""}, 3, "cannot inspect: \n"},
      {{"--help"}, 0, "--packets"},
      {{}, 2, ""},
      {{"--packets", "--json", kSample}, 2, ""},
      // The stress run makes its own seeks, speeds and threads, and delivers nothing.
      {{"--stress", "1", "--threads", kSample}, 2, "--threads excludes --stress"},
      {{"--stress", "1", "--seek", "0", kSample}, 2, "--seek excludes --stress"},
      {{"--stress", "1", "--exact", kSample}, 2, "--exact excludes --stress"},
      {{"--stress", "1", "--speed", "500", kSample}, 2, "--speed excludes --stress"},
      {{"--stress", "1", "--chapter", "1", kSample}, 2, "--chapter excludes --stress"},
      {{"--stress", "1", "--extract", ".", kSample}, 2, "--extract excludes --stress"},
      {{"--stress", "1", "--plot", "x.svg", kSample}, 2, "--plot excludes --stress"},
      {{"--chapter", "10", kSample}, 2, ""},
      {{"--inspect", kSample, kSample}, 2, ""},
      {{"--extract", "/nonexistent/dir", kSample}, 2, ""},
      {{"--module", "/nonexistent/MKVSource.so", kSample}, 4, ""},
      {{"--module", KVL_CORE_PATH, kSample}, 4, ""},  // a shared object without _getPlugin
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.args));
    const HostRun run = RunKvlPlay(c.args);
    EXPECT_EQ(run.status, c.status) << run.errors;
    EXPECT_NE((run.report + run.errors).find(c.shows), std::string::npos) << run.report;
    const bool oneLine = !run.errors.empty() && run.errors.find('\n') + 1 == run.errors.size();
    EXPECT_TRUE(oneLine || c.status == 0 || c.status == 2) << run.errors;
    EXPECT_TRUE(run.report.empty() || c.status != 4) << run.report;
  }
}

// Chapter 5 seeks every stream to its start, taken down to a tick (milliseconds
// here); chapter 9 ends where the title does. The payloads land in files as delivered.
TEST(RunHost, JsonReportDescribesTitleStreamsChapterSeekAndExtraction) {
  const std::string dir = mkvtest::NewTempPath("-extract");
  std::filesystem::create_directory(dir);
  const HostRun run = RunKvlPlay({"--json", "--chapter", "5", "--extract", dir, kSample});
  ASSERT_EQ(run.status, 0) << run.errors;
  const nlohmann::json report = nlohmann::json::parse(run.report);
  EXPECT_TRUE(report["playable"].get<bool>());
  ASSERT_EQ(report["chapters"].size(), 10u);
  ASSERT_EQ(report["streams"].size(), 2u);
  EXPECT_EQ(report["streams"][1]["sample_rate"], 44100);
  const uint32_t videoTicks = report["streams"][0]["duration"];
  EXPECT_EQ(report["chapters"][9]["end"].get<uint32_t>(), videoTicks * 100);
  const nlohmann::json& chapter = report["chapters"][5];
  EXPECT_EQ(report["current_chapter"], chapter["uid"]);
  for (const nlohmann::json& stream : report["streams"]) {
    EXPECT_EQ(stream["ending"], "end of stream");
    ASSERT_EQ(stream["seeks"].size(), 1u);
    EXPECT_EQ(stream["seeks"][0]["result"], 0);
    EXPECT_EQ(stream["seeks"][0]["requested"], chapter["start"].get<uint32_t>() / 100);
    const std::string file =
        dir + "/stream" + stream["index"].dump() + "-" + stream["kind"].get<std::string>();
    EXPECT_EQ(std::filesystem::file_size(file + ".bin"), stream["bytes"]);
    if (stream["codec_private_size"] > 0) {
      EXPECT_EQ(std::filesystem::file_size(file + ".private"), stream["codec_private_size"]);
    }
  }
  EXPECT_EQ(report["engine"]["added"], report["engine"]["removed"]);
  EXPECT_EQ(report["engine"]["open_title_results"], nlohmann::json::array({0}));
}

// x264's files: the cropped size as ffprobe saw it, the coded one within a macroblock of it.
class AvcFileReport : public testing::TestWithParam<const char*> {};

TEST_P(AvcFileReport, H264FactsAgreeWithFFprobe) {
  const std::string path = std::string(CODEC_TEST_DATA_DIR) + "/avc/" + GetParam() + ".mkv";
  const HostRun run = RunKvlPlay({"--json", path});
  ASSERT_EQ(run.status, 0) << run.errors;
  std::map<std::string, std::string> facts = AvcFileFacts(GetParam());
  const nlohmann::json avc = nlohmann::json::parse(run.report)["streams"][0]["h264"];
  const auto field = [&](const char* key) { return avc.contains(key) ? avc[key].dump() : "none"; };
  EXPECT_EQ(facts["sps.profile_idc"], field("profile"));
  EXPECT_EQ(facts["level"], field("level"));
  for (const char* side : {"width", "height"}) {
    const uint32_t coded = avc[std::string("coded_") + side];
    const uint32_t cropped = avc[std::string("cropped_") + side];
    EXPECT_EQ(facts[side], std::to_string(cropped));
    EXPECT_LT(coded - cropped, facts["sps.frame_cropping_flag"] == "1" ? 16u : 1u);
  }
  EXPECT_EQ(facts.count("hrd_bit_rate") ? facts["hrd_bit_rate"] : "none", field("peak_bitrate"));
  EXPECT_EQ(facts.count("hrd_cpb_size") ? facts["hrd_cpb_size"] : "none", field("buffer_size"));
}

INSTANTIATE_TEST_SUITE_P(X264, AvcFileReport,
                         testing::Values("baseline_l10", "main_l30_vui", "high_l41_vbr_hrd",
                                         "high_l40_cbr_hrd", "high10_l31_interlaced",
                                         "high444_l20"));

using Tracks = std::map<std::string, std::vector<CsvRow>>;

Tracks ByTrack(const std::vector<CsvRow>& rows, size_t column) {
  Tracks tracks;
  for (const CsvRow& row : rows) tracks[row.at(column)].push_back(row);
  return tracks;
}

class MediaPlayback : public testing::TestWithParam<const char*> {};

// Frames by track against ffprobe's, the same with a thread per stream, and in
// the engine's order: before every chunk, its stream's end so far is the
// earliest of all streams with chunks to come (ties to the earlier one).
TEST_P(MediaPlayback, DeliversEveryFrameAsFfprobeSawItFurthestBehindFirst) {
  const std::string path = mkvtest::MediaPath(GetParam());
  const HostRun run = RunKvlPlay({"--packets", path});
  const HostRun threaded = RunKvlPlay({"--packets", "--threads", path});
  ASSERT_EQ(run.status + threaded.status, 0) << run.errors << threaded.errors;
  EXPECT_EQ(0u, run.report.find("stream,kind,track,start,duration,size,md5\n"));
  const std::vector<CsvRow> rows = mkvtest::CsvRows(run.report);
  const Tracks chunks = ByTrack(rows, kTrack);
  const Tracks packets = ByTrack(mkvtest::ReadFacts(GetParam(), "packets"), 0);
  ASSERT_EQ(chunks.size(), packets.size());
  EXPECT_EQ(ByTrack(mkvtest::CsvRows(threaded.report), kTrack), chunks);
  for (const auto& [track, expected] : packets) {
    SCOPED_TRACE("track " + track);
    const std::vector<CsvRow>& got = chunks.at(track);
    ASSERT_EQ(got.size(), expected.size());
    for (size_t i = 0; i < got.size(); ++i) {
      SCOPED_TRACE("frame " + std::to_string(i));
      EXPECT_EQ(got[i][kSize] + " " + got[i][kMd5], expected[i][2] + " " + expected[i][3]);
      // ffprobe interpolates the later frames of a laced block: compare the first.
      const bool firstOfBlock = i == 0 || got[i][kStart] != got[i - 1][kStart];
      if (firstOfBlock && !expected[i][1].empty()) {
        EXPECT_EQ(got[i][kStart], expected[i][1]);
      }
    }
  }
  std::map<std::string, size_t> lastRow;
  for (size_t i = 0; i < rows.size(); ++i) lastRow[rows[i][kStream]] = i;
  std::map<std::string, uint64_t> end;
  for (size_t i = 0; i < rows.size(); ++i) {
    const std::string& chosen = rows[i][kStream];
    for (const auto& [stream, last] : lastRow) {
      if (stream == chosen || last < i) continue;
      EXPECT_LE(end[chosen] + (stream < chosen), end[stream]) << "row " << i;
    }
    end[chosen] = std::stoull(rows[i][kStart]) + std::stoull(rows[i][kDuration]);
  }
}

// ffprobe takes pixels for square where the file states no ratio.
TEST_P(MediaPlayback, ReportAgreesWithFfprobe) {
  const HostRun run = RunKvlPlay({"--json", mkvtest::MediaPath(GetParam())});
  ASSERT_EQ(run.status, 0) << run.errors;
  const nlohmann::json report = nlohmann::json::parse(run.report);
  for (const CsvRow& fact : mkvtest::ReadFacts(GetParam(), "streams")) {
    if (fact[1] != "video") continue;
    const nlohmann::json& stream = report["streams"][std::stoul(fact[0])];
    const std::string ratio =
        stream["pixel_aspect_x"].dump() + ":" + stream["pixel_aspect_y"].dump();
    EXPECT_EQ(ratio == "0:0" ? "1:1" : ratio, fact[4]);
  }
}

INSTANTIATE_TEST_SUITE_P(CommittedFiles, MediaPlayback,
                         testing::ValuesIn(kPlayedMedia));

}  // namespace
}  // namespace hosttest
