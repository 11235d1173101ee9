// Every committed media file played through the module and the host's own
// code path, frame by frame against ffprobe's packet list.
#include <gtest/gtest.h>

#include <map>

#include "tests/host/host_run.h"
#include "tests/support/media_files.h"

namespace hosttest {
namespace {

// Items by track (the reader's track position), in delivery order.
template <typename Item, typename Track>
std::map<unsigned int, std::vector<Item>> ByTrack(const std::vector<Item>& items, Track track) {
  std::map<unsigned int, std::vector<Item>> tracks;
  for (const Item& item : items) tracks[static_cast<unsigned int>(track(item))].push_back(item);
  return tracks;
}

std::map<unsigned int, std::vector<PacketRow>> ByTrack(const std::string& report) {
  return ByTrack(ParsePacketRows(report), [](const PacketRow& row) { return row.track; });
}

class MediaPlayback : public testing::TestWithParam<const char*> {};

TEST_P(MediaPlayback, DeliversEveryFrameAsFfprobeSawIt) {
  const std::string name = GetParam();
  const HostRun run = RunKvlPlay({"--packets", mkvtest::MediaPath(name)});
  ASSERT_EQ(run.status, 0) << run.errors;
  const auto chunks = ByTrack(run.report);
  const auto packets =
      ByTrack(mkvtest::ReadPackets(name), [](const mkvtest::Packet& p) { return p.stream; });
  ASSERT_FALSE(packets.empty());
  ASSERT_EQ(chunks.size(), packets.size());

  for (const auto& [track, expected] : packets) {
    SCOPED_TRACE("track " + std::to_string(track));
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
  const auto chunks = [](const HostRun& run) {
    std::map<unsigned int, std::vector<std::pair<std::string, uint32_t>>> tracks;
    for (const PacketRow& row : ParsePacketRows(run.report))
      tracks[row.track].emplace_back(row.md5, row.start);
    return tracks;
  };
  EXPECT_EQ(chunks(single), chunks(threaded));
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

}  // namespace
}  // namespace hosttest
