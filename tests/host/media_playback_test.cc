// Every committed media file played through the module and the host's own
// code path, frame by frame against ffprobe's packet list.
#include <gtest/gtest.h>

#include <map>

#include "tests/host/host_run.h"
#include "tests/support/media_files.h"

namespace hosttest {
namespace {

using mkvtest::Packet;

// The chunks of each track (the reader's track position), in delivery order.
std::map<unsigned int, std::vector<PacketRow>> ByTrack(const std::vector<PacketRow>& rows) {
  std::map<unsigned int, std::vector<PacketRow>> tracks;
  for (const PacketRow& row : rows) tracks[row.track].push_back(row);
  return tracks;
}

std::map<unsigned int, std::vector<Packet>> ByTrack(const std::vector<Packet>& packets) {
  std::map<unsigned int, std::vector<Packet>> tracks;
  for (const Packet& packet : packets)
    tracks[static_cast<unsigned int>(packet.stream)].push_back(packet);
  return tracks;
}

class MediaPlayback : public testing::TestWithParam<const char*> {};

TEST_P(MediaPlayback, DeliversEveryFrameAsFfprobeSawIt) {
  const std::string name = GetParam();
  const HostRun run = RunKvlPlay({"--packets", mkvtest::MediaPath(name)});
  ASSERT_EQ(run.status, 0) << run.errors;
  const auto chunks = ByTrack(ParsePacketRows(run.report));
  const auto packets = ByTrack(mkvtest::ReadPackets(name));
  ASSERT_FALSE(packets.empty());
  ASSERT_EQ(chunks.size(), packets.size());

  for (const auto& [track, expected] : packets) {
    SCOPED_TRACE("track " + std::to_string(track));
    ASSERT_EQ(chunks.count(track), 1u);
    const std::vector<PacketRow>& got = chunks.at(track);
    ASSERT_EQ(got.size(), expected.size());
    for (size_t i = 0; i < got.size(); ++i) {
      SCOPED_TRACE("frame " + std::to_string(i));
      EXPECT_EQ(got[i].size, expected[i].size);
      EXPECT_EQ(got[i].md5, expected[i].md5);
      // ffprobe interpolates the times of later frames of a laced block,
      // while every frame of a block carries the block's time: compare the
      // first frame of each block only.
      const bool firstOfBlock = i == 0 || got[i].start != got[i - 1].start;
      if (firstOfBlock && expected[i].pts) {
        EXPECT_EQ(got[i].start, *expected[i].pts);
      }
    }
  }
}

TEST_P(MediaPlayback, ThreadsDeliverTheSameChunksPerStream) {
  const std::string path = mkvtest::MediaPath(GetParam());
  const HostRun single = RunKvlPlay({"--packets", path});
  const HostRun threaded = RunKvlPlay({"--packets", "--threads", path});
  ASSERT_EQ(single.status, 0) << single.errors;
  ASSERT_EQ(threaded.status, 0) << threaded.errors;
  const auto one = ByTrack(ParsePacketRows(single.report));
  const auto many = ByTrack(ParsePacketRows(threaded.report));
  ASSERT_EQ(one.size(), many.size());
  for (const auto& [track, rows] : one) {
    ASSERT_EQ(many.at(track).size(), rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(many.at(track)[i].md5, rows[i].md5);
      EXPECT_EQ(many.at(track)[i].start, rows[i].start);
    }
  }
}

// The engine reads next from the stream furthest behind: before every
// chunk, its stream's end time so far is the earliest of all streams that
// still have chunks to come (ties go to the earlier stream).
TEST_P(MediaPlayback, ReadsTheStreamFurthestBehindFirst) {
  const HostRun run = RunKvlPlay({"--packets", mkvtest::MediaPath(GetParam())});
  ASSERT_EQ(run.status, 0) << run.errors;
  const std::vector<PacketRow> rows = ParsePacketRows(run.report);
  std::map<size_t, size_t> lastRow;
  for (size_t i = 0; i < rows.size(); ++i) lastRow[rows[i].stream] = i;
  std::map<size_t, uint32_t> end;
  for (size_t i = 0; i < rows.size(); ++i) {
    const size_t chosen = rows[i].stream;
    for (const auto& [stream, last] : lastRow) {
      if (stream == chosen || last < i) continue;
      if (stream < chosen)
        EXPECT_LT(end[chosen], end[stream]) << "row " << i;
      else
        EXPECT_LE(end[chosen], end[stream]) << "row " << i;
    }
    end[chosen] = rows[i].start + rows[i].duration;
  }
}

INSTANTIATE_TEST_SUITE_P(CommittedFiles, MediaPlayback,
                         testing::Values("h264_aac", "hevc_mp3", "h264_mp3_laced",
                                         "h264_aac_scale100us", "mpeg4_aac", "sample"));

TEST(MediaPlaybackRefusal, AudioOnlyFileIsNotPlayable) {
  const HostRun run = RunKvlPlay({mkvtest::MediaPath("aac_only")});
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.errors.find("not playable: file://"), std::string::npos) << run.errors;
  EXPECT_NE(run.report.find("playable: no"), std::string::npos);
}

}  // namespace
}  // namespace hosttest
