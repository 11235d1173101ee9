// kvl-play's command line: statuses, one-line errors, report forms, options.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/codec/avc_file_facts.h"
#include "tests/host/host_run.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_file.h"

namespace hosttest {
namespace {

const std::string kSample = mkvtest::MediaPath("sample");

bool IsOneLine(const std::string& text) {
  return !text.empty() && text.back() == '\n' &&
         std::count(text.begin(), text.end(), '\n') == 1;
}

// The C library's own file: a shared object without _getPlugin.
std::string LibcPath() {
  Dl_info info = {};
  if (dladdr(reinterpret_cast<void*>(&std::fclose), &info) == 0 || !info.dli_fname) return "";
  return info.dli_fname;
}

// `shows`: text the report or the error line must hold. Failures to load
// or open say so in one line.
TEST(RunHost, StatusPerKindOfInput) {
  const std::string text = mkvtest::WriteTemp(mkvtest::Bytes{'n', 'o', 't', '\n'}, ".mkv");
  const std::string garbage = mkvtest::WriteTemp(mkvtest::Bytes(64, 0x5a), ".so");
  const std::string size = std::to_string(std::filesystem::file_size(kSample));
  const struct {
    std::vector<std::string> args;
    int status;
    std::string shows;
  } cases[] = {
      {{kSample}, 0, ""},
      {{text}, 1, ""},                                  // not Matroska
      {{"/nonexistent/file.mkv"}, 1, ""},               // canPlay can't read it
      {{"http://example.invalid/a.mkv"}, 3, ""},        // accepted unseen, can't be opened
      {{"--refuse", "", kSample}, 1, "refused: video format \"\" (reason 20)"},  // AVC asks
      {{"--refuse", "H265", kSample}, 0, ""},
      {{mkvtest::MediaPath("aac_only")}, 1, "not playable: file://"},
      {{"--refuse", "H265", mkvtest::MediaPath("hevc_mp3")}, 1, "refused video format \"H265\""},
      {{"--inspect", kSample}, 0, "size: " + size + "\n"},
      {{"--inspect", "http://example.invalid/a.mkv"}, 3, ""},
      {{"--help"}, 0, "--packets"},
      {{}, 2, ""},
      {{"--packets", "--json", kSample}, 2, ""},
      {{"--chapter", "10", kSample}, 2, ""},
      {{"--seek", "-5", kSample}, 2, ""},
      {{"--inspect", kSample, kSample}, 2, ""},
      {{"--extract", "/nonexistent/dir", kSample}, 2, ""},
      {{"--bogus", kSample}, 2, ""},
      {{"--module", "/nonexistent/MKVSource.so", kSample}, 4, ""},
      {{"--module", LibcPath(), kSample}, 4, ""},  // no _getPlugin
      {{"--module", garbage, kSample}, 4, ""},
      {{"--module", kSample, kSample}, 4, ""},
  };
  for (const auto& c : cases) {
    std::string joined;
    for (const std::string& arg : c.args) joined += "[" + arg + "]";
    SCOPED_TRACE(joined);
    const HostRun run = RunKvlPlay(c.args);
    EXPECT_EQ(run.status, c.status) << run.errors;
    EXPECT_NE((run.report + run.errors).find(c.shows), std::string::npos) << run.report;
    if (c.status == 1 || c.status >= 3) {
      EXPECT_TRUE(IsOneLine(run.errors)) << run.errors;
    }
    if (c.status == 4) {
      EXPECT_EQ("", run.report);
    }
  }
}

// Selecting chapter 5 seeks every stream to its start, taken down to a
// tick (milliseconds here); chapter 9 ends where the title does.
TEST(RunHost, JsonReportDescribesTitleStreamsAndTheChapterSeek) {
  const HostRun run = RunKvlPlay({"--json", "--chapter", "5", kSample});
  ASSERT_EQ(run.status, 0) << run.errors;
  const nlohmann::json report = nlohmann::json::parse(run.report);
  EXPECT_TRUE(report["playable"].get<bool>());
  ASSERT_EQ(report["chapters"].size(), 10u);
  ASSERT_EQ(report["streams"].size(), 2u);
  const nlohmann::json& video = report["streams"][0];
  EXPECT_EQ(report["streams"][1]["sample_rate"], 44100);
  EXPECT_EQ(report["chapters"][9]["end"].get<uint32_t>(), video["duration"].get<uint32_t>() * 100);
  EXPECT_EQ(report["current_chapter"], report["chapters"][5]["uid"]);
  for (const nlohmann::json& stream : report["streams"]) {
    EXPECT_EQ(stream["ending"], "end of stream");
    ASSERT_EQ(stream["seeks"].size(), 1u);
    EXPECT_EQ(stream["seeks"][0]["result"], 0);
    EXPECT_EQ(stream["seeks"][0]["requested"], report["chapters"][5]["start"].get<uint32_t>() / 100);
  }
  EXPECT_EQ(report["engine"]["added"], report["engine"]["removed"]);
  EXPECT_EQ(report["engine"]["open_title_results"], nlohmann::json::array({0}));
}

// The H.264 facts of x264's files against ffprobe's and ffmpeg's reading:
// the coded size is whole macroblocks, the cropped one ffprobe's.
class AvcFileReport : public testing::TestWithParam<const char*> {};

TEST_P(AvcFileReport, H264FactsAgreeWithFFprobe) {
  const std::string path = std::string(CODEC_TEST_DATA_DIR) + "/avc/" + GetParam() + ".mkv";
  const HostRun run = RunKvlPlay({"--json", path});
  ASSERT_EQ(run.status, 0) << run.errors;
  std::map<std::string, std::string> facts = AvcFileFacts(GetParam());
  const nlohmann::json report = nlohmann::json::parse(run.report);
  const nlohmann::json& avc = report["streams"][0]["h264"];
  const auto field = [&](const char* key) { return avc.contains(key) ? avc[key].dump() : "none"; };
  EXPECT_EQ(facts["sps.profile_idc"], field("profile"));
  EXPECT_EQ(facts["level"], field("level"));
  for (const char* side : {"width", "height"}) {
    const uint32_t coded = avc[std::string("coded_") + side], cropped = avc[std::string("cropped_") + side];
    EXPECT_EQ(facts[side], std::to_string(cropped));
    EXPECT_EQ(0u, coded % 16);
    EXPECT_LT(coded - cropped, facts["sps.frame_cropping_flag"] == "1" ? 16u : 1u);
  }
  EXPECT_EQ(facts.count("hrd_bit_rate") ? facts["hrd_bit_rate"] : "none", field("peak_bitrate"));
  EXPECT_EQ(facts.count("hrd_cpb_size") ? facts["hrd_cpb_size"] : "none", field("buffer_size"));
}

INSTANTIATE_TEST_SUITE_P(X264, AvcFileReport,
                         testing::Values("baseline_l10", "main_l30_vui", "high_l41_vbr_hrd",
                                         "high_l40_cbr_hrd", "high10_l31_interlaced", "high444_l20"));

TEST(RunHost, ExtractWritesPayloadsAsDelivered) {
  const std::string dir = mkvtest::NewTempPath("-extract");
  std::filesystem::create_directory(dir);
  const HostRun extract = RunKvlPlay({"--extract", dir, kSample});
  ASSERT_EQ(extract.status, 0) << extract.errors;
  const HostRun listed = RunKvlPlay({"--packets", kSample});
  std::map<std::string, size_t> bytes;
  for (const auto& row : mkvtest::CsvRows(listed.report)) bytes[row[kStream]] += stoul(row[kSize]);
  EXPECT_EQ(std::filesystem::file_size(dir + "/stream0-video.bin"), bytes["0"]);
  EXPECT_EQ(std::filesystem::file_size(dir + "/stream1-audio.bin"), bytes["1"]);
  EXPECT_GT(std::filesystem::file_size(dir + "/stream0-video.private"), 0u);
}

}  // namespace
}  // namespace hosttest
