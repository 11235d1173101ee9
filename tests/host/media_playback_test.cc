// Every committed media file played through the module and the host's own
// code path, frame by frame against ffprobe's packet list.
#include <gtest/gtest.h>

#include <map>

#include "tests/host/host_run.h"
#include "tests/support/media_files.h"

namespace hosttest {
namespace {

class MediaPlayback : public testing::TestWithParam<const char*> {};

// Frames by track against ffprobe's, the same with a thread per stream,
// and in the engine's order: before every chunk, its stream's end so far is
// the earliest of all streams with chunks to come (ties to the earlier one).
TEST_P(MediaPlayback, DeliversEveryFrameAsFfprobeSawItFurthestBehindFirst) {
  const std::string path = mkvtest::MediaPath(GetParam());
  const HostRun run = RunKvlPlay({"--packets", path});
  const HostRun threaded = RunKvlPlay({"--packets", "--threads", path});
  ASSERT_EQ(run.status + threaded.status, 0) << run.errors << threaded.errors;
  const auto byTrack = [](const HostRun& run) {
    std::map<unsigned int, std::vector<PacketRow>> tracks;
    for (const PacketRow& row : ParsePacketRows(run.report)) tracks[row.track].push_back(row);
    return tracks;
  };
  const auto chunks = byTrack(run);
  auto threadedChunks = byTrack(threaded);
  std::map<unsigned int, std::vector<mkvtest::Packet>> packets;
  for (const mkvtest::Packet& p : mkvtest::ReadPackets(GetParam())) packets[p.stream].push_back(p);
  ASSERT_FALSE(packets.empty());
  ASSERT_EQ(chunks.size(), packets.size());
  for (const auto& [track, expected] : packets) {
    SCOPED_TRACE("track " + std::to_string(track));
    const std::vector<PacketRow>& got = chunks.at(track);
    const std::vector<PacketRow>& gotThreaded = threadedChunks[track];
    ASSERT_EQ(got.size(), expected.size());
    ASSERT_EQ(gotThreaded.size(), expected.size());
    for (size_t i = 0; i < got.size(); ++i) {
      SCOPED_TRACE("frame " + std::to_string(i));
      EXPECT_EQ(got[i].size, expected[i].size);
      EXPECT_EQ(got[i].md5, expected[i].md5);
      EXPECT_EQ(gotThreaded[i].md5 + std::to_string(gotThreaded[i].start),
                got[i].md5 + std::to_string(got[i].start));
      // ffprobe interpolates the times of later frames of a laced block,
      // while every frame of a block carries the block's time: compare the
      // first frame of each block only.
      const bool firstOfBlock = i == 0 || got[i].start != got[i - 1].start;
      if (firstOfBlock && expected[i].pts) {
        EXPECT_EQ(got[i].start, *expected[i].pts);
      }
    }
  }
  const std::vector<PacketRow> rows = ParsePacketRows(run.report);
  std::map<size_t, size_t> lastRow;
  for (size_t i = 0; i < rows.size(); ++i) lastRow[rows[i].stream] = i;
  std::map<size_t, uint32_t> end;
  for (size_t i = 0; i < rows.size(); ++i) {
    const size_t chosen = rows[i].stream;
    for (const auto& [stream, last] : lastRow) {
      if (stream == chosen || last < i) continue;
      EXPECT_LE(end[chosen] + (stream < chosen), end[stream]) << "row " << i;
    }
    end[chosen] = rows[i].start + rows[i].duration;
  }
}

INSTANTIATE_TEST_SUITE_P(CommittedFiles, MediaPlayback,
                         testing::Values("h264_aac", "hevc_mp3", "h264_mp3_laced", "h264_mp3_wide_pixels",
                                         "h264_aac_scale100us", "mpeg4_aac", "sample"));

}  // namespace
}  // namespace hosttest
