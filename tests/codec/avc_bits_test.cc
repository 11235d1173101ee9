#include "codec/avc_bit_cursor.h"
#include "codec/avc_bit_reader.h"
#include "gtest/gtest.h"
#include "tests/codec/test_bytes.h"

namespace {

TEST(AVCBitReaderTest, FixedWidthReadsAndAnExpGolombCodeBeyond64Bits) {
  unsigned char data[] = {0xA5, 0x3C, 0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD};
  EXPECT_EQ(0x53u, AVCReadUintBits(data, 4, 8));
  EXPECT_EQ(0x3C0123456789ABCDull, AVCReadUintBits(data, 8, 64));
  unsigned long long result = 99;
  EXPECT_FALSE(ReadUINTBits(data, 8, 8, 4, &result));  // only a position at the limit fails
  EXPECT_EQ(99u, result);
  EXPECT_TRUE(ReadUINTBits(data, 12, 8, 4, &result));
  EXPECT_EQ(0xCu, result);
  // A code beyond 64 bits wraps: 2^64 - 1 + 5.
  Bytes wide = BitWriter().Bits(0, 64).Bits(1, 1).Bits(5, 64).bytes();
  unsigned int used = 0;
  EXPECT_EQ(4u, AVCReadExpGolomb(wide.data(), 0, &used));
  EXPECT_EQ(129u, used);
}

// The source decides: a 3 behind written zeros but not source zeros stays.
TEST(AVCBitReaderTest, EmulationPreventionDropsOnlyEscapes) {
  struct Case {
    Bytes source, expected;
  } cases[] = {{{0, 0, 3, 1}, {0, 0, 1}},       {{0, 0, 3, 4}, {0, 0, 3, 4}},
               {{0, 0, 3, 0, 0, 3, 1}, {0, 0, 0, 0, 1}}, {{0, 0, 3}, {0, 0, 3}},
               {{3, 0, 0, 3, 3}, {3, 0, 0, 3}}, {{0, 0, 3, 0, 3, 2}, {0, 0, 0, 3, 2}}};
  for (Case& c : cases) {
    Bytes target(c.source.size(), 0xEE);
    unsigned int size = static_cast<unsigned int>(target.size());
    ASSERT_EQ(0, AVCCopyRemove_Emulation_Prevention_0x03_Byte(c.source.data(), size,
                                                              target.data(), &size));
    target.resize(size);
    EXPECT_EQ(c.expected, target);
  }
  unsigned char source[] = {1, 2, 3}, target[3] = {9, 9, 9};
  unsigned int size = 3, shorter = 2;
  EXPECT_EQ(-8, AVCCopyRemove_Emulation_Prevention_0x03_Byte(nullptr, 3, target, &size) +
                    AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 0, target, &size) +
                    AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 3, nullptr, &size) +
                    AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 3, target, nullptr));
  EXPECT_EQ(-2, AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 3, target, &shorter));
  EXPECT_EQ(9, target[0]);
}

// A read past the end (fixed-width, or a code cut short) fails and leaves value and position.
TEST(AVCBitCursorTest, ReadsToTheLastBitAndCutsToTheFieldWidth) {
  unsigned char data[] = {0xA5, 0x3C};
  AVCBitCursor bits(data, sizeof data);
  uint16_t value = 0;
  EXPECT_TRUE(bits.ReadBits(12, &value));
  EXPECT_FALSE(bits.ReadBits(5, &value));
  EXPECT_EQ(0xA53, value);
  EXPECT_EQ(12u, bits.position());
  EXPECT_TRUE(bits.ReadBits(4, &value));
  EXPECT_EQ(0xC, value);
  EXPECT_FALSE(bits.ReadBits(1, &value));

  Bytes wide = BitWriter().UE(300).SE(-0x80000001ll).bytes();
  AVCBitCursor cut(wide.data(), static_cast<unsigned int>(wide.size()));
  uint8_t narrow = 0;
  int32_t offset = 0;
  EXPECT_TRUE(cut.ReadExpGolomb(&narrow) && cut.ReadSignedExpGolomb(&offset));
  EXPECT_EQ(44, narrow);
  EXPECT_EQ(0x7FFFFFFF, offset);
  for (const Bytes& code : {BitWriter().Bits(0, 8).Bits(1, 1).Bits(0, 7).bytes(),
                            BitWriter().Bits(0, 30).Bits(1, 1).Bits(0, 1).bytes()}) {
    ForEachPrefix(code, [](unsigned char* data, unsigned int size) {
      AVCBitCursor bits(data, size);
      uint64_t value = 7;
      int32_t signedValue = 7;
      EXPECT_FALSE(bits.ReadExpGolomb(&value) || bits.ReadSignedExpGolomb(&signedValue));
      EXPECT_EQ(7u + 7, value + signedValue);
      EXPECT_EQ(0u, bits.position());
    });
  }
}

}  // namespace
