#include "codec/avc_bit_reader.h"

#include <vector>

#include "gtest/gtest.h"
#include "tests/codec/bit_writer.h"

namespace {

TEST(AVCReadUintBitsTest, ReadsMostSignificantBitFirstAcrossBytes) {
  unsigned char data[] = {0xA5, 0x3C, 0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD};
  struct Case {
    unsigned int position, count;
    uint64_t value;
  } cases[] = {
      {0, 0, 0},     {0, 1, 1},       {1, 3, 2},
      {4, 8, 0x53},  {7, 2, 2},       {0, 16, 0xA53C},
      {8, 64, 0x3C0123456789ABCDull},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.value, AVCReadUintBits(data, c.position, c.count))
        << c.position << "+" << c.count;
  }
}

TEST(ReadUINTBitsTest, RefusesOnlyAPositionEqualToTheLimit) {
  unsigned char data[] = {0xF0, 0x0F};
  unsigned long long result = 99;
  EXPECT_FALSE(ReadUINTBits(data, 8, 8, 4, &result));
  EXPECT_EQ(99u, result);
  EXPECT_TRUE(ReadUINTBits(data, 12, 8, 4, &result));
  EXPECT_EQ(0xFu, result);
  EXPECT_TRUE(ReadUINTBits(data, 2, 16, 4, &result));
  EXPECT_EQ(0xCu, result);
  EXPECT_TRUE(ReadUINTBits(data, 0, 16, 4, nullptr));
}

TEST(AVCReadExpGolombTest, DecodesCodesAndTheirLengths) {
  struct Case {
    uint64_t code;
    unsigned int length;
    int64_t signedValue;
  } cases[] = {{0, 1, 0},   {1, 3, 1},   {2, 3, -1},  {3, 5, 2},
               {4, 5, -2},  {6, 5, -3},  {7, 7, 4},   {0xFFFFFFFEull, 63, -0x7FFFFFFF}};
  for (const Case& c : cases) {
    // Behind 3 bits of padding, so that codes don't start on a byte.
    std::vector<unsigned char> data =
        BitWriter().Bits(5, 3).UE(c.code).Bits(0xFF, 8).bytes();
    unsigned int used = 0;
    EXPECT_EQ(c.code, AVCReadExpGolomb(data.data(), 3, &used));
    EXPECT_EQ(c.length, used);
    used = 0;
    EXPECT_EQ(c.signedValue, AVCReadSignedExpGolomb(data.data(), 3, &used));
    EXPECT_EQ(c.length, used);
  }
}

TEST(AVCReadExpGolombTest, CodeBeyondSixtyFourBitsWraps) {
  std::vector<unsigned char> data =
      BitWriter().Bits(0, 64).Bits(1, 1).Bits(5, 64).bytes();
  unsigned int used = 0;
  // 2^64 - 1 + 5, modulo 2^64.
  EXPECT_EQ(4u, AVCReadExpGolomb(data.data(), 0, &used));
  EXPECT_EQ(129u, used);
}

TEST(EmulationPreventionTest, DropsOnlyThreesBehindTwoZerosBeforeASmallByte) {
  struct Case {
    std::vector<unsigned char> source, expected;
  } cases[] = {
      {{0, 0, 3, 1}, {0, 0, 1}},
      {{0, 0, 3, 4}, {0, 0, 3, 4}},
      {{0, 0, 3, 0, 0, 3, 1}, {0, 0, 0, 0, 1}},
      {{0, 0, 3}, {0, 0, 3}},
      {{3, 0, 0, 3, 3}, {3, 0, 0, 3}},
      {{3, 3, 0}, {3, 3, 0}},
      // The source decides: a 3 behind written zeros but not source zeros stays.
      {{0, 0, 3, 0, 3, 2}, {0, 0, 0, 3, 2}},
  };
  for (Case& c : cases) {
    std::vector<unsigned char> target(c.source.size(), 0xEE);
    unsigned int size = static_cast<unsigned int>(target.size());
    ASSERT_EQ(0, AVCCopyRemove_Emulation_Prevention_0x03_Byte(
                     c.source.data(), static_cast<unsigned int>(c.source.size()),
                     target.data(), &size));
    target.resize(size);
    EXPECT_EQ(c.expected, target);
  }
}

TEST(EmulationPreventionTest, BadArgumentsWriteNothing) {
  unsigned char source[] = {1, 2, 3};
  unsigned char target[3] = {9, 9, 9};
  unsigned int size = 3;
  EXPECT_EQ(-2, AVCCopyRemove_Emulation_Prevention_0x03_Byte(nullptr, 3, target, &size));
  EXPECT_EQ(-2, AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 0, target, &size));
  EXPECT_EQ(-2, AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 3, nullptr, &size));
  EXPECT_EQ(-2, AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 3, target, nullptr));
  size = 2;
  EXPECT_EQ(-2, AVCCopyRemove_Emulation_Prevention_0x03_Byte(source, 3, target, &size));
  EXPECT_EQ(2u, size);
  EXPECT_EQ(9, target[0]);
}

}  // namespace
