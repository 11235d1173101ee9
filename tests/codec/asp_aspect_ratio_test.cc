#include "codec/asp_aspect_ratio.h"

#include <algorithm>
#include <vector>

#include "gtest/gtest.h"
#include "tests/codec/bit_writer.h"
#include "tests/codec/mkv_codec_private.h"

namespace {

using Bytes = std::vector<unsigned char>;

TEST(ReadASPBitsTest, ReadsInsideTheDataAndKeepsWhatItGotAtTheEnd) {
  const unsigned char data[] = {0xA5, 0x3C, 0x0F};
  struct Case {
    uint64_t position;
    unsigned int count;
    bool read;
    uint32_t value;
  } cases[] = {
      {0, 4, true, 0xA},     {4, 8, true, 0x53},    {2, 3, true, 0x4},
      {0, 24, true, 0xA53C0F}, {3, 0, true, 0},     {12, 12, true, 0xC0F},
      {12, 16, false, 0xC0F}, {16, 9, false, 0x0F}, {24, 1, false, 0},
      {0, 33, false, 0},
  };
  for (const Case& c : cases) {
    uint32_t value = 0xDEAD;
    EXPECT_EQ(c.read, readASPBits(data, sizeof data, c.position, c.count, &value))
        << c.position << "+" << c.count;
    EXPECT_EQ(c.value, value) << c.position << "+" << c.count;
  }
  EXPECT_FALSE(readASPBits(data, sizeof data, 0, 1, nullptr));
  uint32_t value = 7;
  EXPECT_FALSE(readASPBits(nullptr, 3, 0, 1, &value));
  EXPECT_EQ(0u, value);
}

TEST(ReadASPBitsTest, ReadsThirtyTwoBitsAcrossFiveBytes) {
  const unsigned char data[] = {0x12, 0x34, 0x56, 0x78, 0x9A};
  uint32_t value = 0;
  EXPECT_TRUE(readASPBits(data, sizeof data, 4, 32, &value));
  EXPECT_EQ(0x23456789u, value);
}

// Layer header fields up to aspect_ratio_info (and the extended ratio), with
// a few bytes behind.
Bytes LayerHeader(unsigned int offset, unsigned int startCode,
                  bool identifier, unsigned int info, unsigned int parWidth = 0,
                  unsigned int parHeight = 0) {
  BitWriter w;
  for (unsigned int i = 0; i < offset; ++i)
    w.Byte(0xFF);
  w.Bits(0x000001, 24).Byte(startCode).Bits(0, 1).Byte(1).Bits(identifier, 1);
  if (identifier)
    w.Bits(2, 4).Bits(1, 3);
  w.Bits(info, 4);
  if (info == 15)
    w.Byte(parWidth).Byte(parHeight);
  return w.Bits(0xFFFF, 16).bytes();
}

Bytes VideoObjectThenLayer(bool identifier, unsigned int info,
                           unsigned int parWidth = 0,
                           unsigned int parHeight = 0) {
  Bytes data = {0, 0, 1, 0};
  const Bytes layer = LayerHeader(0, 0x20, identifier, info, parWidth, parHeight);
  data.insert(data.end(), layer.begin(), layer.end());
  return data;
}

struct Found {
  bool found;
  unsigned int width, height;
};

Found Search(Bytes data) {
  Found result = {false, 0xEEEE, 0xEEEE};
  result.found = getPARFromASPBitstream(
      data.data(), static_cast<unsigned int>(data.size()), &result.width,
      &result.height);
  return result;
}

void ExpectRatio(const Found& found, unsigned int width, unsigned int height) {
  EXPECT_TRUE(found.found);
  EXPECT_EQ(width, found.width);
  EXPECT_EQ(height, found.height);
}

TEST(GetPARFromASPBitstreamTest, MapsEveryAspectRatioInfo) {
  const unsigned int table[16][2] = {
      {1, 1}, {1, 1}, {12, 11}, {10, 11}, {16, 11}, {40, 33}, {1, 1}, {1, 1},
      {1, 1}, {1, 1}, {1, 1},   {1, 1},   {1, 1},   {1, 1},   {1, 1}, {0, 9}};
  for (bool identifier : {false, true}) {
    for (unsigned int info = 0; info < 16; ++info) {
      SCOPED_TRACE(info);
      ExpectRatio(Search(VideoObjectThenLayer(identifier, info, 0, 9)),
                  table[info][0], table[info][1]);
    }
  }
}

TEST(GetPARFromASPBitstreamTest, LooksOnlyAtOffsetsFiveBytesApart) {
  for (unsigned int offset : {4, 9, 14, 19, 5, 8, 10, 0}) {
    const bool seen = offset % 5 == 4;
    const Found found = Search(LayerHeader(offset, 0x2F, false, 4));
    EXPECT_EQ(seen, found.found) << offset;
    if (seen)
      ExpectRatio(found, 16, 11);
  }
}

TEST(GetPARFromASPBitstreamTest, ShortOrMissingInputs) {
  Bytes data = VideoObjectThenLayer(false, 3);
  data.resize(10);  // aspect_ratio_info ends in byte 9.
  ExpectRatio(Search(data), 10, 11);
  data.resize(9);
  EXPECT_FALSE(Search(data).found);
  unsigned int width = 0;
  EXPECT_FALSE(getPARFromASPBitstream(nullptr, 20, &width, &width));
  Bytes full = VideoObjectThenLayer(false, 3);
  EXPECT_FALSE(getPARFromASPBitstream(full.data(), 20, nullptr, &width));
  EXPECT_FALSE(getPARFromASPBitstream(full.data(), 20, &width, nullptr));
}

TEST(GetPARFromASPBitstreamTest, StreamEndingInsideTheExtendedRatio) {
  // par_width takes bits 78 to 85, par_height bits 86 to 93.
  const Bytes data = VideoObjectThenLayer(false, 15, 8, 9);
  const Found found = Search(Bytes(data.begin(), data.begin() + 11));
  EXPECT_FALSE(found.found);
  EXPECT_EQ(8u, found.width);
  EXPECT_EQ(0xEEEEu, found.height);
  ExpectRatio(Search(Bytes(data.begin(), data.begin() + 12)), 8, 9);
}

// ffmpeg's header of a stream whose SAR ffprobe gives as 12:11: the sequence
// and visual object headers put the video object at byte 12, where the
// search doesn't look; from the video object on, the ratio is found.
TEST(GetPARFromASPBitstreamTest, RealHeaderIsFoundBehindAVideoObjectAlone) {
  const Bytes header =
      FirstTrackCodecPrivate(TestDataPath("media/mpeg4_aac.mkv"));
  const unsigned char videoObject[] = {0, 0, 1, 0};
  const auto start = std::search(header.begin(), header.end(), videoObject,
                                 videoObject + 4);
  ASSERT_NE(header.end(), start);
  EXPECT_FALSE(Search(header).found);
  ExpectRatio(Search(Bytes(start, header.end())), 12, 11);
}

}  // namespace
