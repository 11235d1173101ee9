#include "codec/asp_aspect_ratio.h"

#include <algorithm>

#include "gtest/gtest.h"
#include "tests/codec/test_bytes.h"

namespace {

TEST(ReadASPBitsTest, ReadsInsideTheDataAndKeepsWhatItGotAtTheEnd) {
  const unsigned char data[] = {0xA5, 0x3C, 0x0F, 0x78, 0x9A};
  const struct {
    uint64_t position;
    unsigned int count;
    bool read;
    uint32_t value;
  } cases[] = {{0, 4, true, 0xA}, {4, 8, true, 0x53}, {3, 0, true, 0}, {12, 12, true, 0xC0F},
               {4, 32, true, 0x53C0F789}, {28, 16, false, 0x89A}, {32, 9, false, 0x9A},
               {40, 1, false, 0}, {0, 33, false, 0}};
  for (const auto& c : cases) {
    uint32_t value = 0xDEAD;
    EXPECT_EQ(c.read, readASPBits(data, sizeof data, c.position, c.count, &value)) << c.position;
    EXPECT_EQ(c.value, value) << c.position << "+" << c.count;
  }
  EXPECT_FALSE(readASPBits(data, sizeof data, 0, 1, nullptr));
  uint32_t value = 7;
  EXPECT_FALSE(readASPBits(nullptr, 3, 0, 1, &value));
  EXPECT_EQ(0u, value);
}

// A video object, then the layer header up to aspect_ratio_info (and the
// extended ratio) `offset` bytes further, with a few bytes behind.
Bytes Header(unsigned int offset, bool identifier, unsigned int info, unsigned int parWidth = 0,
             unsigned int parHeight = 0) {
  BitWriter w;
  w.Bits(0x00000100, 32);
  for (unsigned int i = 4; i < offset; ++i) w.Byte(0xFF);
  w.Bits(0x000001, 24).Byte(0x20).Bits(0, 1).Byte(1).Bits(identifier, 1);
  if (identifier) w.Bits(2, 4).Bits(1, 3);
  w.Bits(info, 4);
  if (info == 15) w.Byte(parWidth).Byte(parHeight);
  return w.Bits(0xFFFF, 16).bytes();
}

// The ratio found, or 0xEEEE where nothing was written.
std::pair<unsigned int, unsigned int> Search(Bytes data, size_t size = SIZE_MAX) {
  unsigned int width = 0xEEEE, height = 0xEEEE;
  const bool found = getPARFromASPBitstream(
      data.data(), static_cast<unsigned int>(std::min(size, data.size())), &width, &height);
  EXPECT_EQ(found, width != 0xEEEE && height != 0xEEEE);
  return {width, height};
}

// The edges of the listed ratios (2 to 5) and the extended one. Only offsets 4, 9, 14 ... are
// looked at; a stream ending inside the fields keeps what was read.
TEST(GetPARFromASPBitstreamTest, RatiosOffsetsShortInputsAndNulls) {
  const unsigned int cases[][3] = {{1, 1, 1}, {2, 12, 11}, {5, 40, 33}, {6, 1, 1}, {15, 0, 9}};
  for (bool identifier : {false, true}) {
    for (const auto& c : cases)
      EXPECT_EQ(std::make_pair(c[1], c[2]), Search(Header(4, identifier, c[0], 0, 9))) << c[0];
  }
  for (unsigned int offset : {4, 9, 14, 19, 5, 8, 10}) {
    const auto none = std::make_pair(0xEEEEu, 0xEEEEu);
    EXPECT_EQ(offset % 5 == 4 ? std::make_pair(16u, 11u) : none, Search(Header(offset, false, 4)));
  }
  EXPECT_EQ(std::make_pair(10u, 11u), Search(Header(4, false, 3), 10));  // info ends in byte 9
  EXPECT_EQ(std::make_pair(0xEEEEu, 0xEEEEu), Search(Header(4, false, 3), 9));
  EXPECT_EQ(std::make_pair(0xEEEEu, 0xEEEEu), Search(Header(4, true, 3), 10));  // info cut
  // par_width takes bits 78 to 85, par_height bits 86 to 93.
  EXPECT_EQ(std::make_pair(0xEEEEu, 0xEEEEu), Search(Header(4, false, 15, 8, 9), 10));
  EXPECT_EQ(std::make_pair(8u, 0xEEEEu), Search(Header(4, false, 15, 8, 9), 11));
  EXPECT_EQ(std::make_pair(8u, 9u), Search(Header(4, false, 15, 8, 9), 12));
  unsigned int width = 0;
  Bytes full = Header(4, false, 3);
  EXPECT_FALSE(getPARFromASPBitstream(nullptr, 20, &width, &width));
  EXPECT_FALSE(getPARFromASPBitstream(full.data(), 20, nullptr, &width));
  EXPECT_FALSE(getPARFromASPBitstream(full.data(), 20, &width, nullptr));
}

}  // namespace
