// kvl-play as a child process on files that are missing, unreadable, not
// files, or changed under the play; and plays whose streams deliver nothing.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/host/kvl_play_run.h"
#include "tests/support/media_files.h"
#include "tests/support/mkv_writer.h"
#include "tests/support/temp_file.h"

namespace hosttest {
namespace {

namespace fs = std::filesystem;

const std::string kSample = mkvtest::MediaPath("sample");

std::string CopyOf(const std::string& path) {
  const std::string copy = mkvtest::NewTempPath();
  fs::copy_file(path, copy);
  return copy;
}

// The host's own lines among the plug-in's.
size_t HostLines(const std::string& errors) {
  size_t lines = errors.rfind("kvl-play: ", 0) == 0 ? 1 : 0;
  for (size_t at = errors.find("\nkvl-play: "); at != std::string::npos;
       at = errors.find("\nkvl-play: ", at + 1))
    ++lines;
  return lines;
}

// Told before the module is asked anything: the path and the system's reason.
TEST(SourceFile, PathThatIsNoReadableFileFailsWithTheSystemsReason) {
  const std::string missing = mkvtest::NewTempPath();
  const std::string folder = mkvtest::NewTempPath("-folder");
  fs::create_directory(folder);
  const struct {
    std::vector<std::string> args;
    std::string line;
  } cases[] = {
      {{missing}, "cannot read " + missing + ": No such file or directory\n"},
      {{"FILE://" + missing}, "cannot read " + missing + ": No such file or directory\n"},
      {{"--json", folder}, "cannot read " + folder + ": Is a directory\n"},
      {{"file:///dev/null"}, "cannot read /dev/null: not a regular file\n"},
      {{"--inspect", missing}, "cannot read " + missing + ": No such file or directory\n"},
      {{"--stress", "1", missing}, "cannot read " + missing + ": No such file or directory\n"},
      // Not even a module is needed to tell.
      {{"--module", "/nonexistent.so", folder}, "cannot read " + folder + ": Is a directory\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.args));
    const HostRun run = RunKvlPlayChild(c.args);
    EXPECT_EQ(run.status, 7);
    EXPECT_EQ(run.errors, "kvl-play: " + c.line);
    EXPECT_EQ(run.report, "");
  }
}

// Root reads any file, so the child gives up root for nobody first.
TEST(SourceFile, FileWithoutReadPermissionFailsAsPermissionDenied) {
  const std::string locked = CopyOf(kSample);
  fs::permissions(locked, fs::perms::none);
  const HostRun run = RunKvlPlayChild({locked}, {}, true);
  if (run.status == kNoNobody) GTEST_SKIP() << "cannot run as nobody";
  EXPECT_EQ(run.status, 7) << run.errors;
  EXPECT_EQ(run.errors, "kvl-play: cannot read " + locked + ": Permission denied\n");
}

// Cut to two thirds once every stream is open: what lies before the cut
// plays, the report and the picture are whole, and the cut is told last.
TEST(SourceFile, FileCutDuringThePlayIsToldAfterTheReport) {
  const std::string cut = CopyOf(kSample);
  const uintmax_t size = fs::file_size(cut);
  const uintmax_t kept = size * 2 / 3;
  const std::string hook =
      "KVL_PLAY_HOOK=reading:truncate -s " + std::to_string(kept) + " '" + cut + "'";
  const HostRun whole = RunKvlPlayChild({"--json", kSample});
  const std::string picture = mkvtest::NewTempPath(".svg");
  const HostRun run = RunKvlPlayChild({"--json", "--plot", picture, cut}, {hook});
  ASSERT_EQ(whole.status, 0) << whole.errors;
  EXPECT_EQ(run.status, 8);
  EXPECT_EQ(fs::file_size(cut), kept);
  EXPECT_TRUE(fs::exists(picture));
  const nlohmann::json report = nlohmann::json::parse(run.report);
  EXPECT_TRUE(report["file_changed"].get<bool>());
  const std::string change = "size " + std::to_string(size) + " -> " + std::to_string(kept);
  EXPECT_EQ(report["file_change"], change);
  const nlohmann::json full = nlohmann::json::parse(whole.report);
  EXPECT_FALSE(full["file_changed"].get<bool>());
  ASSERT_EQ(report["streams"].size(), full["streams"].size());
  for (size_t i = 0; i < full["streams"].size(); ++i) {
    EXPECT_GT(report["streams"][i]["chunks"], 0);
    EXPECT_LT(report["streams"][i]["chunks"], full["streams"][i]["chunks"]);
    EXPECT_EQ(report["streams"][i]["ending"], "end of stream");
  }
  const std::string line = "the file changed during the play (" + change + "): file://" + cut;
  EXPECT_NE(run.errors.find("kvl-play: " + line + "\n"), std::string::npos) << run.errors;
  EXPECT_EQ(HostLines(run.errors), 1u) << run.errors;
}

// Every way of changing the file, at the point of the play where it does
// harm; "{f}" stands for the played file. Renamed over between the probe and
// the open, the new file is read at the old one's positions.
TEST(SourceFile, EveryKindOfChangeDuringThePlayIsTold) {
  const std::string other = mkvtest::MediaPath("h264_aac");
  const uintmax_t bytes = fs::file_size(kSample);
  const std::string size = std::to_string(bytes);
  const struct {
    std::string hook;
    std::string change;
  } cases[] = {
      {"probed:cp '" + other + "' '{f}.new' && mv '{f}.new' '{f}'", "replaced"},
      {"reading:rm '{f}'", "removed"},
      {"reading:truncate -s 1000 '{f}'", "size " + size + " -> 1000"},
      // Still being written.
      {"probed:truncate -s +1 '{f}'", "size " + size + " -> " + std::to_string(bytes + 1)},
      // The same size, written over in place.
      {"reading:touch -d 2001-01-01 '{f}'", "modified"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.hook);
    const std::string played = CopyOf(kSample);
    std::string hook = c.hook;
    for (size_t at = hook.find("{f}"); at != std::string::npos; at = hook.find("{f}"))
      hook.replace(at, 3, played);
    const HostRun run = RunKvlPlayChild({"--packets", played}, {"KVL_PLAY_HOOK=" + hook});
    EXPECT_EQ(run.status, 8);
    EXPECT_EQ(run.report.find("stream,kind,track,start,duration,size,md5\n"), 0u);
    const std::string line =
        "kvl-play: the file changed during the play (" + c.change + "): file://" + played + "\n";
    EXPECT_NE(run.errors.find(line), std::string::npos) << run.errors;
  }
}

// Only a play from the start must reach every stream; here the audio track
// has no block at all.
TEST(SourceFile, StreamThatDeliversNothingFromTheStartIsTold) {
  mkvtest::MkvFile file{{mkvtest::VideoTrack(), mkvtest::AudioTrack()}, {}, 1000000, 1000.0};
  for (uint64_t time : {0, 500})
    file.clusters.push_back({time, {{1, 0, true, {mkvtest::Payload(64)}}}});
  const std::string path = mkvtest::WriteMkv(file);
  const struct {
    std::vector<std::string> args;
    int status;
  } cases[] = {
      {{"--json", path}, 9},
      {{"--json", "--threads", path}, 9},
      {{"--json", "--seek", "900", path}, 0},
      {{"--json", "--chapter", "9", path}, 0},
      {{"--json", "--seek", "999999", kSample}, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.args));
    const HostRun run = RunKvlPlayChild(c.args);
    EXPECT_EQ(run.status, c.status) << run.errors;
    const nlohmann::json report = nlohmann::json::parse(run.report);
    ASSERT_EQ(report["streams"].size(), 2u);
    EXPECT_FALSE(report["streams"][0]["delivered_nothing"].get<bool>());
    EXPECT_EQ(report["streams"][1]["delivered_nothing"].get<bool>(), c.status == 9);
    if (c.status != 9) continue;
    EXPECT_EQ(HostLines(run.errors), 1u) << run.errors;
    EXPECT_NE(run.errors.find("kvl-play: stream 1 (audio, track 1) delivered nothing: file://"),
              std::string::npos)
        << run.errors;
  }
}

}  // namespace
}  // namespace hosttest
