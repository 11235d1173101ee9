// The writer against mkvparser: what it places is what the parser finds.
#include "tests/support/mkv_writer.h"

#include <gtest/gtest.h>

#include "tests/support/loaded_segment.h"

namespace mkvtest {
namespace {

// Each row is a block of its own cluster: every kind of lacing (sizes that
// need two-byte and signed vints), block groups, a foreign track and the
// extreme block times. Each frame lands where the writer says, with its
// bytes, track, key flag and time.
TEST(MkvWriterTest, FramesLandWherePlaced) {
  std::vector<Bytes> laced;
  for (size_t size : {127, 300, 1, 510, 255, 20000}) laced.push_back(Payload(size, size % 251));
  const Block rows[] = {SimpleBlock(2, -5, true, laced, Lacing::kXiph),
                        SimpleBlock(2, 0, true, laced, Lacing::kEbml),
                        GroupBlock(2, 1, false, {Payload(9), Payload(9)}, 20, Lacing::kFixed),
                        SimpleBlock(7, 0, true, {Payload(4, 3)}),
                        GroupBlock(1, 40, true, {Payload(5)}),
                        SimpleBlock(1, -32768, false, {Payload(200, 4)}),
                        SimpleBlock(1, 32767, false, {Payload(1, 5)})};
  MkvFile file;
  file.tracks = {Track::Video(1, "V_TEST", 16, 16), Track::Audio(2, "A_TEST", 8000, 1)};
  for (const Block& row : rows) file.clusters.push_back(Cluster{40000, {row}});
  file.clusters.insert(file.clusters.begin() + 1, Cluster{});  // the parser leaves it out
  const SerializedMkv mkv = Serialize(file);
  LoadedSegment loaded(mkv.bytes);
  ASSERT_EQ(loaded.status, 0);
  ASSERT_EQ(loaded.segment->GetCount(), static_cast<long>(std::size(rows)));
  size_t i = 0;
  for (const mkvparser::Cluster* cluster = loaded.segment->GetFirst(); !cluster->EOS();
       cluster = loaded.segment->GetNext(cluster)) {
    const mkvparser::BlockEntry* entry = nullptr;
    ASSERT_EQ(cluster->GetFirst(entry), 0);
    const mkvparser::Block& block = *entry->GetBlock();
    for (int f = 0; f < block.GetFrameCount(); ++f, ++i) {
      ASSERT_LT(i, mkv.frames.size());
      const FramePlace& place = mkv.frames[i];
      const Block& source = file.clusters[place.cluster].blocks[place.block];
      EXPECT_EQ(block.GetFrame(f).pos, place.pos) << i;
      EXPECT_EQ(block.GetFrame(f).len, place.len) << i;
      EXPECT_EQ(Bytes(mkv.bytes.begin() + place.pos, mkv.bytes.begin() + place.pos + place.len),
                source.frames[place.frame]) << i;
      EXPECT_EQ(block.GetTrackNumber(), static_cast<long long>(source.track)) << i;
      EXPECT_EQ(block.IsKey(), source.key) << i;
      EXPECT_EQ(block.GetTimeCode(cluster), 40000 + source.timecode) << i;
    }
  }
  EXPECT_EQ(i, mkv.frames.size());
  EXPECT_NE(LoadedSegment(Truncated(mkv.bytes, mkv.tracks.offset + 12)).status, 0);
  // 127 in one byte would be the unknown size, which a parser may read as 127.
  Bytes vints;
  for (uint64_t value : {126, 127}) AppendVint(&vints, value);
  for (int64_t value : {-63, 64}) AppendSignedVint(&vints, value);
  EXPECT_EQ(vints, (Bytes{0xFE, 0x40, 0x7F, 0x80, 0x60, 0x3F}));
}

}  // namespace
}  // namespace mkvtest
