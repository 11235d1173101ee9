// The writer against mkvparser: what it places is what the parser finds.
#include "tests/support/mkv_writer.h"

#include <gtest/gtest.h>

#include "tests/support/loaded_segment.h"

namespace mkvtest {
namespace {

TEST(MkvWriterTest, VintsTakeTheFewestBytesAndAvoidTheUnknownSize) {
  const std::pair<int64_t, Bytes> cases[] = {
      {0, {0x80}}, {126, {0xFE}}, {127, {0x40, 0x7F}}, {16383, {0x20, 0x3F, 0xFF}}};
  for (const auto& [value, encoded] : cases) {
    Bytes out;
    AppendVint(&out, value);
    EXPECT_EQ(out, encoded) << value;
  }
  Bytes lacing;
  for (int64_t value : {0, -63, 64}) AppendSignedVint(&lacing, value);
  EXPECT_EQ(lacing, (Bytes{0xBF, 0x80, 0x60, 0x3F}));
}

// Every kind of lacing, block groups, a foreign track, the extreme block
// times, an empty cluster and unknown sizes: each frame lands where the
// writer says, with its bytes, track, key flag and time.
TEST(MkvWriterTest, FramesLandWherePlaced) {
  std::vector<Bytes> laced;
  for (size_t size : {300, 1, 510, 255, 20000}) laced.push_back(Payload(size, size % 251));
  MkvFile file;
  file.unknown_segment_size = true;
  file.seek_head = true;
  file.tracks = {Track::Video(1, "V_TEST", 16, 16), Track::Audio(2, "A_TEST", 8000, 1)};
  Cluster open_ended{40000, {SimpleBlock(1, -32768, false, {Payload(200, 4)}),
                             SimpleBlock(1, 32767, false, {Payload(1, 5)})}};
  open_ended.unknown_size = true;
  file.clusters = {
      Cluster{2000, {SimpleBlock(2, -5, true, laced, Lacing::kXiph),
                     SimpleBlock(2, 0, true, laced, Lacing::kEbml),
                     GroupBlock(2, 1, false, {Payload(9), Payload(9)}, 20, Lacing::kFixed),
                     SimpleBlock(7, 0, true, {Payload(4, 3)}), GroupBlock(1, 40, true, {Payload(5)})}},
      Cluster{3000, {}}, open_ended};
  const SerializedMkv mkv = Serialize(file);
  LoadedSegment loaded(mkv.bytes);
  ASSERT_EQ(loaded.status, 0);
  EXPECT_EQ(loaded.segment->GetCount(), 2);  // the parser leaves out an empty cluster
  size_t i = 0;
  ForEachBlock(*loaded.segment, [&](const mkvparser::Cluster& cluster, const mkvparser::Block& block) {
    for (int f = 0; f < block.GetFrameCount(); ++f, ++i) {
      ASSERT_LT(i, mkv.frames.size());
      const FramePlace& place = mkv.frames[i];
      const Cluster& written = file.clusters[place.cluster];
      const Block& source = written.blocks[place.block];
      EXPECT_EQ(block.GetFrame(f).pos, place.pos) << i;
      EXPECT_EQ(block.GetFrame(f).len, place.len) << i;
      EXPECT_EQ(Bytes(mkv.bytes.begin() + place.pos, mkv.bytes.begin() + place.pos + place.len),
                source.frames[place.frame]) << i;
      EXPECT_EQ(block.GetTrackNumber(), static_cast<long long>(source.track)) << i;
      EXPECT_EQ(block.IsKey(), source.key) << i;
      EXPECT_EQ(block.GetTimeCode(&cluster), static_cast<long long>(written.timecode) + source.timecode);
    }
  });
  EXPECT_EQ(i, mkv.frames.size());
  EXPECT_EQ(mkv.seek_head->offset, mkv.segment_data);
  EXPECT_EQ(mkv.segment.end(), mkv.bytes.size());
}

TEST(MkvWriterTest, CutAndCorruptedFilesFailToLoad) {
  MkvFile file;
  file.tracks = {Track::Video(1, "V_TEST", 16, 16)};
  const SerializedMkv mkv = Serialize(file);
  EXPECT_NE(LoadedSegment(Truncated(mkv.bytes, mkv.ebml_header.end() - 3)).status, 0);
  EXPECT_NE(LoadedSegment(Truncated(mkv.bytes, mkv.tracks.offset + 12)).status, 0);
  EXPECT_NE(LoadedSegment(Corrupted(mkv.bytes, 0, {0x00})).status, 0);
  EXPECT_EQ(Corrupted({1, 2}, 1, {7, 8}), (Bytes{1, 7, 8}));
}

}  // namespace
}  // namespace mkvtest
