// Every committed media file played through the module and the host's own
// code path, frame by frame against ffprobe's packet list.
#include <gtest/gtest.h>

#include <map>

#include "tests/host/host_run.h"
#include "tests/support/media_files.h"

namespace hosttest {
namespace {

using mkvtest::CsvRow;
using Tracks = std::map<std::string, std::vector<CsvRow>>;

Tracks ByTrack(const std::vector<CsvRow>& rows, size_t column) {
  Tracks tracks;
  for (const CsvRow& row : rows) tracks[row.at(column)].push_back(row);
  return tracks;
}

class MediaPlayback : public testing::TestWithParam<const char*> {};

// Frames by track against ffprobe's, the same with a thread per stream,
// and in the engine's order: before every chunk, its stream's end so far is
// the earliest of all streams with chunks to come (ties to the earlier one).
TEST_P(MediaPlayback, DeliversEveryFrameAsFfprobeSawItFurthestBehindFirst) {
  const std::string path = mkvtest::MediaPath(GetParam());
  const HostRun run = RunKvlPlay({"--packets", path});
  const HostRun threaded = RunKvlPlay({"--packets", "--threads", path});
  ASSERT_EQ(run.status + threaded.status, 0) << run.errors << threaded.errors;
  EXPECT_EQ(0u, run.report.find("stream,kind,track,start,duration,size,md5\n"));
  const std::vector<CsvRow> rows = mkvtest::CsvRows(run.report);
  const Tracks chunks = ByTrack(rows, kTrack);
  const Tracks threadedChunks = ByTrack(mkvtest::CsvRows(threaded.report), kTrack);
  const Tracks packets = ByTrack(mkvtest::ReadPackets(GetParam()), 0);
  ASSERT_FALSE(packets.empty());
  ASSERT_EQ(chunks.size(), packets.size());
  for (const auto& [track, expected] : packets) {
    SCOPED_TRACE("track " + track);
    const std::vector<CsvRow>& got = chunks.at(track);
    EXPECT_EQ(threadedChunks.at(track), got);
    ASSERT_EQ(got.size(), expected.size());
    for (size_t i = 0; i < got.size(); ++i) {
      SCOPED_TRACE("frame " + std::to_string(i));
      EXPECT_EQ(got[i][kSize] + " " + got[i][kMd5], expected[i][2] + " " + expected[i][3]);
      // Every frame of a laced block carries the block's time, while ffprobe
      // interpolates the later ones: compare each block's first frame only.
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

INSTANTIATE_TEST_SUITE_P(CommittedFiles, MediaPlayback,
                         testing::Values("h264_aac", "hevc_mp3", "h264_mp3_laced",
                                         "h264_mp3_wide_pixels", "h264_aac_scale100us",
                                         "mpeg4_aac", "sample"));

}  // namespace
}  // namespace hosttest
