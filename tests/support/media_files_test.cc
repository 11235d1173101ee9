// The committed media files agree with the ffprobe lists beside them, as
// mkvparser reads them, and have what their names promise.
#include "tests/support/media_files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "tests/support/loaded_segment.h"

namespace mkvtest {
namespace {

Bytes ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// What one media file holds, as mkvparser reads it.
struct Summary {
  std::vector<Packet> frames;  // pts only for the first frame of a block
  size_t clusters = 0;  // those with blocks
  size_t laced_blocks = 0;
  size_t video_keys = 0;
};

Summary Summarize(LoadedSegment& loaded) {
  Summary summary;
  const mkvparser::Tracks* tracks = loaded.segment->GetTracks();
  const mkvparser::Cluster* last_cluster = nullptr;
  ForEachBlock(*loaded.segment, [&](const mkvparser::Cluster& cluster,
                                    const mkvparser::Block& block) {
    if (&cluster != last_cluster) ++summary.clusters;
    last_cluster = &cluster;
    const mkvparser::Track* track = tracks->GetTrackByNumber(block.GetTrackNumber());
    if (block.GetFrameCount() > 1) ++summary.laced_blocks;
    if (block.IsKey() && track && track->GetType() == 1) ++summary.video_keys;
    for (int i = 0; i < block.GetFrameCount(); ++i) {
      const mkvparser::Block::Frame& frame = block.GetFrame(i);
      Bytes data(frame.len);
      EXPECT_EQ(frame.Read(&loaded.reader, data.data()), 0);
      Packet packet;
      packet.stream = static_cast<int>(block.GetTrackNumber() - 1);
      if (i == 0) packet.pts = block.GetTimeCode(&cluster);
      packet.size = data.size();
      packet.md5 = Md5Hex(data.data(), data.size());
      summary.frames.push_back(packet);
    }
  });
  return summary;
}

class MediaFileTest : public testing::TestWithParam<const char*> {};

TEST_P(MediaFileTest, FramesMatchTheProbedPackets) {
  const std::string name = GetParam();
  const Bytes bytes = ReadFile(MediaPath(name));
  ASSERT_GT(bytes.size(), 0u);
  EXPECT_LT(bytes.size(), name == "sample" ? 1000000u : 100000u);
  LoadedSegment loaded(bytes);
  ASSERT_EQ(loaded.status, 0);
  const Summary summary = Summarize(loaded);
  const std::vector<Packet> packets = ReadPackets(name);
  ASSERT_EQ(summary.frames.size(), packets.size());
  for (size_t i = 0; i < packets.size(); ++i) {
    EXPECT_EQ(summary.frames[i].stream, packets[i].stream) << i;
    EXPECT_EQ(summary.frames[i].size, packets[i].size) << i;
    EXPECT_EQ(summary.frames[i].md5, packets[i].md5) << i;
    if (summary.frames[i].pts) {
      EXPECT_EQ(summary.frames[i].pts, packets[i].pts) << i;
    }
  }
}

TEST_P(MediaFileTest, TracksMatchTheProbedStreams) {
  const std::map<std::string, std::string> codec_ids = {
      {"h264", "V_MPEG4/ISO/AVC"}, {"hevc", "V_MPEGH/ISO/HEVC"}, {"mpeg4", "V_MPEG4/ISO/ASP"},
      {"aac", "A_AAC"},            {"mp3", "A_MPEG/L3"}};
  const std::string name = GetParam();
  LoadedSegment loaded(ReadFile(MediaPath(name)));
  ASSERT_EQ(loaded.status, 0);
  const mkvparser::Tracks* tracks = loaded.segment->GetTracks();
  const long long scale = loaded.segment->GetInfo()->GetTimeCodeScale();
  const std::vector<StreamInfo> streams = ReadStreams(name);
  ASSERT_EQ(tracks->GetTracksCount(), streams.size());
  for (const StreamInfo& stream : streams) {
    const mkvparser::Track* track = tracks->GetTrackByIndex(stream.index);
    EXPECT_EQ(track->GetNumber(), stream.index + 1);
    EXPECT_EQ(track->GetType(), stream.codec_type == "video" ? 1 : 2);
    EXPECT_EQ(codec_ids.at(stream.codec_name), track->GetCodecId());
    EXPECT_EQ(stream.time_base_num * 1000000000, stream.time_base_den * scale);
  }
}

INSTANTIATE_TEST_SUITE_P(All, MediaFileTest, testing::ValuesIn(kMediaNames));

TEST(MediaFilesTest, EachFileHasWhatItIsMadeFor) {
  const auto summarize = [](const std::string& name) {
    LoadedSegment loaded(ReadFile(MediaPath(name)));
    EXPECT_EQ(loaded.status, 0) << name;
    return std::make_pair(Summarize(loaded), loaded.segment->GetInfo()->GetTimeCodeScale());
  };
  EXPECT_GT(summarize("h264_mp3_laced").first.laced_blocks, 0u);
  EXPECT_EQ(summarize("h264_aac").first.laced_blocks, 0u);
  EXPECT_EQ(summarize("h264_aac_scale100us").second, 100000);
  EXPECT_EQ(summarize("aac_only").first.video_keys, 0u);
  const Summary sample = summarize("sample").first;
  EXPECT_GE(sample.clusters, 5u);
  EXPECT_EQ(sample.video_keys, 5u);  // one a second
}

}  // namespace
}  // namespace mkvtest
