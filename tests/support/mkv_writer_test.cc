#include "tests/support/mkv_writer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "tests/support/loaded_segment.h"
#include "tests/support/temp_file.h"

namespace mkvtest {
namespace {

// Every frame of every block, in file order, as the parser sees it.
struct ParsedFrame {
  long long track;
  long long time_ns;
  bool key;
  mkvparser::Block::Frame frame;
};

std::vector<ParsedFrame> ParsedFrames(mkvparser::Segment& segment) {
  std::vector<ParsedFrame> frames;
  ForEachBlock(segment, [&](const mkvparser::Cluster& cluster, const mkvparser::Block& block) {
    for (int i = 0; i < block.GetFrameCount(); ++i) {
      frames.push_back(
          {block.GetTrackNumber(), block.GetTime(&cluster), block.IsKey(), block.GetFrame(i)});
    }
  });
  return frames;
}

// Checks that the parser found exactly the frames that the writer placed,
// with their bytes.
void ExpectFramesWhereWritten(const SerializedMkv& mkv, const MkvFile& file) {
  LoadedSegment loaded(mkv.bytes);
  ASSERT_EQ(loaded.status, 0);
  const std::vector<ParsedFrame> parsed = ParsedFrames(*loaded.segment);
  ASSERT_EQ(parsed.size(), mkv.frames.size());
  for (size_t i = 0; i < parsed.size(); ++i) {
    const FramePlace& place = mkv.frames[i];
    const Block& block = file.clusters[place.cluster].blocks[place.block];
    EXPECT_EQ(parsed[i].frame.pos, place.pos) << i;
    EXPECT_EQ(parsed[i].frame.len, place.len) << i;
    EXPECT_EQ(static_cast<uint64_t>(parsed[i].track), place.track) << i;
    EXPECT_EQ(parsed[i].key, block.key) << i;
    const Bytes& expected = block.frames[place.frame];
    ASSERT_EQ(static_cast<size_t>(place.len), expected.size()) << i;
    EXPECT_EQ(0, std::memcmp(mkv.bytes.data() + place.pos, expected.data(), expected.size()))
        << i;
  }
}

TEST(MkvWriterTest, TracksKeepOrderNumbersAndOptionalElements) {
  MkvFile file;
  Track audio = Track::Audio(2, "A_AAC", 48000, 2);
  audio.name = "Stereo";
  audio.codec_private = Bytes{0x11, 0x90};
  Track video = Track::Video(1, "V_MPEG4/ISO/AVC", 320, 240);
  video.default_duration = 40000000;
  video.codec_private = Bytes{};
  Track bare;
  bare.number = 9;
  bare.type = 33;
  file.tracks = {audio, video, Track::Subtitle(5, "S_TEXT/UTF8"), bare};

  LoadedSegment loaded(Serialize(file).bytes);
  ASSERT_EQ(loaded.status, 0);
  const mkvparser::Tracks* tracks = loaded.segment->GetTracks();
  ASSERT_EQ(tracks->GetTracksCount(), 4u);

  const auto* a = static_cast<const mkvparser::AudioTrack*>(tracks->GetTrackByIndex(0));
  EXPECT_EQ(a->GetNumber(), 2);
  EXPECT_EQ(a->GetType(), 2);
  EXPECT_STREQ(a->GetCodecId(), "A_AAC");
  EXPECT_STREQ(a->GetNameAsUTF8(), "Stereo");
  EXPECT_EQ(a->GetSamplingRate(), 48000.0);
  EXPECT_EQ(a->GetChannels(), 2);
  size_t size = 0;
  const unsigned char* data = a->GetCodecPrivate(size);
  ASSERT_EQ(size, 2u);
  EXPECT_EQ(data[1], 0x90);

  const auto* v = static_cast<const mkvparser::VideoTrack*>(tracks->GetTrackByIndex(1));
  EXPECT_EQ(v->GetNumber(), 1);
  EXPECT_EQ(v->GetType(), 1);
  EXPECT_EQ(v->GetWidth(), 320);
  EXPECT_EQ(v->GetHeight(), 240);
  EXPECT_EQ(v->GetDefaultDuration(), 40000000u);
  v->GetCodecPrivate(size);
  EXPECT_EQ(size, 0u);

  EXPECT_EQ(tracks->GetTrackByIndex(2)->GetType(), 17);
  const mkvparser::Track* other = tracks->GetTrackByIndex(3);
  EXPECT_EQ(other->GetNumber(), 9);
  EXPECT_EQ(other->GetType(), 33);
  EXPECT_EQ(other->GetCodecId(), nullptr);
  EXPECT_EQ(other->GetDefaultDuration(), 0u);
}

TEST(MkvWriterTest, InfoScaleAndDuration) {
  const struct {
    std::optional<uint64_t> scale;
    std::optional<double> duration;
    long long parsed_scale;
    long long parsed_duration_ns;
  } cases[] = {
      {1000000, 2500.0, 1000000, 2500000000},
      {100000, 20000.0, 100000, 2000000000},
      {std::nullopt, 1000.0, 1000000, 1000000000},  // Matroska's default scale
      {1000000, std::nullopt, 1000000, -1},
  };
  for (const auto& c : cases) {
    MkvFile file;
    file.info.timecode_scale = c.scale;
    file.info.duration = c.duration;
    file.tracks = {Track::Video(1, "V_TEST", 16, 16)};
    LoadedSegment loaded(Serialize(file).bytes);
    ASSERT_EQ(loaded.status, 0);
    const mkvparser::SegmentInfo* info = loaded.segment->GetInfo();
    EXPECT_EQ(info->GetTimeCodeScale(), c.parsed_scale);
    EXPECT_EQ(info->GetDuration(), c.parsed_duration_ns);
  }
}

TEST(MkvWriterTest, BlockTimesKeysAndForeignTracks) {
  MkvFile file;
  file.info.timecode_scale = 100000;
  file.tracks = {Track::Video(1, "V_TEST", 16, 16), Track::Audio(2, "A_TEST", 8000, 1)};
  file.clusters = {
      Cluster{2000, {SimpleBlock(1, 40, true, {Payload(10, 1)}),
                     SimpleBlock(2, -5, true, {Payload(3, 2)}),
                     SimpleBlock(7, 0, true, {Payload(4, 3)})}},  // no such track
      Cluster{40000, {SimpleBlock(1, -32768, false, {Payload(200, 4)}),
                      SimpleBlock(1, 32767, false, {Payload(1, 5)})}},
  };
  const SerializedMkv mkv = Serialize(file);
  ExpectFramesWhereWritten(mkv, file);

  LoadedSegment loaded(mkv.bytes);
  const std::vector<ParsedFrame> parsed = ParsedFrames(*loaded.segment);
  ASSERT_EQ(parsed.size(), 5u);
  const long long expected_ticks[] = {2040, 1995, 2000, 40000 - 32768, 40000 + 32767};
  for (size_t i = 0; i < parsed.size(); ++i) {
    EXPECT_EQ(parsed[i].time_ns, expected_ticks[i] * 100000) << i;
  }
  EXPECT_EQ(mkv.frames[2].track, 7u);
  ASSERT_EQ(mkv.clusters.size(), 2u);
  EXPECT_EQ(mkv.clusters[1].end(), mkv.bytes.size());
  EXPECT_LT(mkv.frames[4].block_span.offset, static_cast<size_t>(mkv.frames[4].pos));
}

TEST(MkvWriterTest, LacedFramesLandWherePlaced) {
  const struct {
    Lacing lacing;
    mkvparser::Block::Lacing parsed;
    std::vector<size_t> sizes;
  } cases[] = {
      {Lacing::kXiph, mkvparser::Block::kLacingXiph, {300, 1, 510, 255, 7}},
      {Lacing::kEbml, mkvparser::Block::kLacingEbml, {300, 1, 20000, 64, 9}},
      {Lacing::kFixed, mkvparser::Block::kLacingFixed, {100, 100, 100}},
      {Lacing::kXiph, mkvparser::Block::kLacingXiph, {42}},
  };
  for (const auto& c : cases) {
    std::vector<Bytes> frames;
    for (size_t i = 0; i < c.sizes.size(); ++i) {
      frames.push_back(Payload(c.sizes[i], static_cast<uint8_t>(i * 16)));
    }
    MkvFile file;
    file.tracks = {Track::Audio(1, "A_TEST", 8000, 1)};
    file.clusters = {Cluster{0, {SimpleBlock(1, 0, true, frames, c.lacing),
                                 GroupBlock(1, 20, false, frames, 20, c.lacing)}}};
    const SerializedMkv mkv = Serialize(file);
    ExpectFramesWhereWritten(mkv, file);

    LoadedSegment loaded(mkv.bytes);
    const mkvparser::BlockEntry* entry = nullptr;
    ASSERT_EQ(loaded.segment->GetFirst()->GetFirst(entry), 0);
    EXPECT_EQ(entry->GetBlock()->GetLacing(), c.parsed);
    EXPECT_EQ(entry->GetBlock()->GetFrameCount(), static_cast<int>(c.sizes.size()));
  }
}

TEST(MkvWriterTest, BlockGroupsCarryDurationAndReference) {
  MkvFile file;
  file.tracks = {Track::Video(1, "V_TEST", 16, 16)};
  file.clusters = {Cluster{0, {GroupBlock(1, 0, true, {Payload(5)}, 40),
                               GroupBlock(1, 40, false, {Payload(6)}),
                               SimpleBlock(1, 80, false, {Payload(7)}, Lacing::kNone)}}};
  ExpectFramesWhereWritten(Serialize(file), file);

  LoadedSegment loaded(Serialize(file).bytes);
  const mkvparser::Cluster* cluster = loaded.segment->GetFirst();
  const mkvparser::BlockEntry* entry = nullptr;
  ASSERT_EQ(cluster->GetFirst(entry), 0);
  ASSERT_EQ(entry->GetKind(), mkvparser::BlockEntry::kBlockGroup);
  const auto* group = static_cast<const mkvparser::BlockGroup*>(entry);
  EXPECT_EQ(group->GetDurationTimeCode(), 40);
  ASSERT_EQ(cluster->GetNext(entry, entry), 0);
  EXPECT_EQ(static_cast<const mkvparser::BlockGroup*>(entry)->GetPrevTimeCode(), -1);
}

TEST(MkvWriterTest, UnknownSizesEmptyClustersSeekHeadAndDocType) {
  MkvFile file;
  file.doc_type = "webm";
  file.unknown_segment_size = true;
  file.seek_head = true;
  file.tracks = {Track::Video(1, "V_VP8", 16, 16)};
  Cluster open_ended{200, {SimpleBlock(1, 0, true, {Payload(9)})}};
  open_ended.unknown_size = true;
  file.clusters = {Cluster{0, {SimpleBlock(1, 0, true, {Payload(8)})}}, Cluster{100, {}},
                   open_ended};
  const SerializedMkv mkv = Serialize(file);
  ExpectFramesWhereWritten(mkv, file);

  LoadedSegment loaded(mkv.bytes);
  EXPECT_STREQ(loaded.header.m_docType, "webm");
  // The parser leaves a cluster without blocks out of its index.
  EXPECT_EQ(loaded.segment->GetCount(), 2);
  EXPECT_EQ(mkv.clusters.size(), 3u);
  ASSERT_TRUE(mkv.seek_head.has_value());
  EXPECT_EQ(mkv.seek_head->offset, mkv.segment_data);
  EXPECT_EQ(mkv.segment.end(), mkv.bytes.size());
}

TEST(MkvWriterTest, CutAndCorruptedFilesFailToLoad) {
  MkvFile file;
  file.tracks = {Track::Video(1, "V_TEST", 16, 16)};
  file.clusters = {Cluster{0, {SimpleBlock(1, 0, true, {Payload(64)})}}};
  const SerializedMkv mkv = Serialize(file);

  EXPECT_NE(LoadedSegment(Truncated(mkv.bytes, mkv.ebml_header.end() - 3)).status, 0);
  EXPECT_NE(LoadedSegment(Truncated(mkv.bytes, mkv.tracks.offset + 12)).status, 0);
  EXPECT_EQ(Truncated(mkv.bytes, mkv.bytes.size() + 5), mkv.bytes);

  const Bytes bad_magic = Corrupted(mkv.bytes, 0, {0x00});
  EXPECT_EQ(bad_magic.size(), mkv.bytes.size());
  EXPECT_NE(LoadedSegment(bad_magic).status, 0);
  EXPECT_EQ(Corrupted({1, 2}, 1, {7, 8}), (Bytes{1, 7, 8}));
}

TEST(MkvWriterTest, WriteTempWritesTheSerializedBytes) {
  MkvFile file;
  file.tracks = {Track::Video(1, "V_TEST", 16, 16)};
  const std::string path = WriteTemp(file);
  EXPECT_NE(path, WriteTemp(Bytes{}));
  EXPECT_EQ(path.rfind(TempDir(), 0), 0u);

  const Bytes expected = Serialize(file).bytes;
  Bytes read(expected.size() + 1);
  FILE* in = std::fopen(path.c_str(), "rb");
  ASSERT_NE(in, nullptr);
  EXPECT_EQ(std::fread(read.data(), 1, read.size(), in), expected.size());
  std::fclose(in);
  read.resize(expected.size());
  EXPECT_EQ(read, expected);
}

}  // namespace
}  // namespace mkvtest
