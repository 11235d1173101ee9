// The committed media files agree with the ffprobe lists beside them, as
// mkvparser reads them, and have what their names promise.
#include "tests/support/media_files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

#include "tests/support/loaded_segment.h"

namespace mkvtest {
namespace {

TEST(MediaFilesTest, FramesAndTracksMatchTheProbedLists) {
  const std::map<std::string, std::string> codec_ids = {
      {"h264", "V_MPEG4/ISO/AVC"}, {"hevc", "V_MPEGH/ISO/HEVC"}, {"mpeg4", "V_MPEG4/ISO/ASP"},
      {"aac", "A_AAC"}, {"mp3", "A_MPEG/L3"}};
  for (const std::string name : kMediaNames) {
    std::ifstream in(MediaPath(name), std::ios::binary);
    LoadedSegment loaded(Bytes(std::istreambuf_iterator<char>(in), {}));
    ASSERT_EQ(loaded.status, 0) << name;
    const mkvparser::Tracks* tracks = loaded.segment->GetTracks();
    const long long scale = loaded.segment->GetInfo()->GetTimeCodeScale();
    const std::vector<StreamInfo> streams = ReadStreams(name);
    ASSERT_EQ(tracks->GetTracksCount(), streams.size()) << name;
    for (const StreamInfo& stream : streams) {
      const mkvparser::Track* track = tracks->GetTrackByIndex(stream.index);
      EXPECT_EQ(track->GetNumber(), stream.index + 1);
      EXPECT_EQ(track->GetType(), stream.codec_type == "video" ? 1 : 2);
      EXPECT_EQ(codec_ids.at(stream.codec_name), track->GetCodecId());
      EXPECT_EQ(stream.time_base_num * 1000000000, stream.time_base_den * scale);
    }
    // pts only for the first frame of a block: ffprobe makes up the others.
    const std::vector<Packet> packets = ReadPackets(name);
    size_t i = 0, laced = 0, keys = 0;
    ForEachBlock(*loaded.segment, [&](const mkvparser::Cluster& cluster,
                                      const mkvparser::Block& block) {
      laced += block.GetFrameCount() > 1;
      keys += block.IsKey() && tracks->GetTrackByNumber(block.GetTrackNumber())->GetType() == 1;
      for (int f = 0; f < block.GetFrameCount(); ++f, ++i) {
        ASSERT_LT(i, packets.size()) << name;
        Bytes data(block.GetFrame(f).len);
        EXPECT_EQ(block.GetFrame(f).Read(&loaded.reader, data.data()), 0);
        EXPECT_EQ(block.GetTrackNumber() - 1, packets[i].stream) << name << i;
        EXPECT_EQ(Md5Hex(data.data(), data.size()), packets[i].md5) << name << i;
        if (f == 0) {
          EXPECT_EQ(block.GetTimeCode(&cluster), packets[i].pts) << name << i;
        }
      }
    });
    EXPECT_EQ(i, packets.size()) << name;
    EXPECT_TRUE(name != "h264_mp3_laced" || laced > 0);
    EXPECT_TRUE(name != "h264_aac" || laced == 0);
    EXPECT_TRUE(name != "aac_only" || keys == 0);
    EXPECT_TRUE(name != "sample" || keys == 5);  // one a second
    EXPECT_TRUE(name != "h264_aac_scale100us" || scale == 100000);
  }
}

}  // namespace
}  // namespace mkvtest
