#include "codec/avc_bit_cursor.h"

#include <vector>

#include "gtest/gtest.h"
#include "tests/codec/bit_writer.h"
#include "tests/codec/exact_buffer.h"

namespace {

TEST(AVCBitCursorTest, ReadsToTheLastBitAndNoFurther) {
  unsigned char data[] = {0xA5, 0x3C};
  AVCBitCursor bits(data, sizeof data);
  uint16_t value = 0;
  EXPECT_TRUE(bits.ReadBits(12, &value));
  EXPECT_EQ(0xA53, value);
  EXPECT_FALSE(bits.ReadBits(5, &value));
  EXPECT_EQ(0xA53, value);
  EXPECT_EQ(12u, bits.position());
  EXPECT_TRUE(bits.ReadBits(4, &value));
  EXPECT_EQ(0xC, value);
  EXPECT_TRUE(bits.ReadBits(0, &value));
  EXPECT_FALSE(bits.ReadBits(1, &value));
}

TEST(AVCBitCursorTest, CutsValuesToTheFieldWidth) {
  std::vector<unsigned char> data =
      BitWriter().UE(300).Bits(0x1FF, 9).SE(-0x80000001ll).bytes();
  AVCBitCursor bits(data.data(), static_cast<unsigned int>(data.size()));
  uint8_t narrow = 0;
  int32_t offset = 0;
  EXPECT_TRUE(bits.ReadExpGolomb(&narrow));
  EXPECT_EQ(44, narrow);
  EXPECT_TRUE(bits.ReadBits(9, &narrow));
  EXPECT_EQ(0xFF, narrow);
  EXPECT_TRUE(bits.ReadSignedExpGolomb(&offset));
  EXPECT_EQ(0x7FFFFFFF, offset);
}

// Exp-Golomb codes that the data doesn't hold to their end: no 1 bit at all,
// or a suffix cut short.
TEST(AVCBitCursorTest, RefusesExpGolombCodesCutShort) {
  const std::vector<unsigned char> cases[] = {
      {0x00, 0x00, 0x00},
      BitWriter().Bits(0, 8).Bits(1, 1).Bits(0, 7).bytes(),  // 8 + 1 + 7 bits
      BitWriter().Bits(0, 30).Bits(1, 1).Bits(0, 1).bytes(),
  };
  for (const std::vector<unsigned char>& data : cases) {
    auto copy = ExactCopy(data, data.size());
    AVCBitCursor bits(copy.get(), static_cast<unsigned int>(data.size()));
    uint64_t value = 7;
    int32_t signedValue = 7;
    EXPECT_FALSE(bits.ReadExpGolomb(&value));
    EXPECT_FALSE(bits.ReadSignedExpGolomb(&signedValue));
    EXPECT_EQ(7u, value);
    EXPECT_EQ(7, signedValue);
    EXPECT_EQ(0u, bits.position());
  }
}

}  // namespace
