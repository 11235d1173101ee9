#include "tests/support/ebml_writer.h"

#include <gtest/gtest.h>

namespace mkvtest {
namespace {

TEST(EbmlWriterTest, VintsTakeTheFewestBytesAndAvoidTheUnknownSize) {
  const struct {
    uint64_t value;
    Bytes encoded;
  } cases[] = {
      {0, {0x80}},
      {126, {0xFE}},
      {127, {0x40, 0x7F}},  // 0xFF would mean "unknown size"
      {16382, {0x7F, 0xFE}},
      {16383, {0x20, 0x3F, 0xFF}},
  };
  for (const auto& c : cases) {
    Bytes out;
    AppendVint(&out, c.value);
    EXPECT_EQ(out, c.encoded) << c.value;
  }
  Bytes fixed;
  AppendVint(&fixed, 5, 8);
  EXPECT_EQ(fixed, (Bytes{0x01, 0, 0, 0, 0, 0, 0, 5}));
}

TEST(EbmlWriterTest, SignedVintsAddTheBiasOfTheirLength) {
  const struct {
    int64_t value;
    Bytes encoded;
  } cases[] = {
      {0, {0xBF}}, {-1, {0xBE}}, {63, {0xFE}}, {-63, {0x80}}, {64, {0x60, 0x3F}},
  };
  for (const auto& c : cases) {
    Bytes out;
    AppendSignedVint(&out, c.value);
    EXPECT_EQ(out, c.encoded) << c.value;
  }
}

TEST(EbmlWriterTest, ElementsAndMasterSizes) {
  Bytes out;
  EbmlWriter writer(&out);
  const size_t master = writer.StartMaster(0x1A45DFA3);
  writer.UInt(0x4286, 0x1234);
  writer.Int(0xFB, -2);
  writer.String(0x4282, "ab");
  writer.EndMaster(master);
  EXPECT_EQ(out, (Bytes{0x1A, 0x45, 0xDF, 0xA3, 0x01, 0, 0, 0, 0, 0, 0, 13,
                        0x42, 0x86, 0x82, 0x12, 0x34,
                        0xFB, 0x81, 0xFE,
                        0x42, 0x82, 0x82, 'a', 'b'}));
}

}  // namespace
}  // namespace mkvtest
