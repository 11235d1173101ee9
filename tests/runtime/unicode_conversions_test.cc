#include "runtime/text/unicode_conversions.h"

#include <stdint.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kUnset = 0xDEADBEEF;

// Inputs live in vectors of exactly their size, so a read past them is caught.
TEST(UTF8ToISO10646, GoesByTheLeadByteAndRepeatsTheLastCodePointForStrayBytes) {
  struct Case {
    std::vector<unsigned char> text;
    int consumed;
    uint32_t code_point;
  } cases[] = {{{0xC0, 0x80, 0}, 2, 0},  // overlong forms and bad followers pass
               {{0xC3, 0x41, 0}, 2, 0xC1}, {{0xF7, 0xBF, 0xBF, 0xBF, 0}, 4, 0x1FFFFF},
               {{0x80, 0}, 0, kUnset}, {{0xF8, 0x80, 0x80, 0x80, 0x80, 0}, 0, kUnset},
               {{0xF0, 0x9F, 0x98, 0}, 0, kUnset}};
  for (const Case& c : cases) {
    uint32_t code_point = kUnset;
    EXPECT_EQ(c.consumed, UTF8StringToISO646Char(c.text.data(), 0, &code_point));
    EXPECT_EQ(c.code_point, code_point);
  }
  uint32_t code_point = kUnset;
  const unsigned char a8[] = "a";
  const uint16_t a16[] = {'a', 0};
  EXPECT_EQ(-6, UTF8StringToISO646Char(nullptr, 0, &code_point) +
                    UTF8StringToISO646Char(a8, 0, nullptr) +
                    UTF8StringToISO646Char(a8, -1, &code_point));
  EXPECT_EQ(-6, UTF16StringToISO10646Char(nullptr, 0, &code_point) +
                    UTF16StringToISO10646Char(a16, 0, nullptr) +
                    UTF16StringToISO10646Char(a16, -1, &code_point));
  EXPECT_EQ(kUnset, code_point);
  // A whole text: a stray byte repeats the last code point.
  const std::vector<unsigned char> text = {0x41, 0x80, 0x42, 0xF0, 0x9F, 0};
  std::vector<uint32_t> out(8, kUnset);
  out.resize(UTF8StringToISO10646(text.data(), out.data()));
  EXPECT_EQ((std::vector<uint32_t>{0x41, 0x41, 0x42, 0x42, 0x42}), out);
  EXPECT_EQ(-4, UTF8StringToISO10646(nullptr, &out[0]) + UTF8StringToISO10646(&text[0], nullptr));
}

TEST(UTF16StringToISO10646, ALowSurrogateLeadingEndsTheWalk) {
  const std::vector<uint16_t> cut_short = {0xD83D, 0};
  uint32_t out[4] = {kUnset, kUnset, kUnset, kUnset};
  EXPECT_EQ(-1, UTF16StringToISO10646Char(cut_short.data(), 0, out));
  EXPECT_EQ(kUnset, out[0]);
  const std::vector<uint16_t> text = {'a', 0xD83D, 0xDE00, 0xDC00, 'b', 0};
  EXPECT_EQ(-1, UTF16StringToISO10646(text.data(), out));
  EXPECT_EQ('a', out[0]);
  EXPECT_EQ(0x1F600u, out[1]);
  EXPECT_EQ(kUnset, out[2]);
  EXPECT_EQ(0, UTF16StringToISO10646(nullptr, out));
}

// Encoders refuse what lies past the range; surrogates pass as one unit.
TEST(UnicodeRoundTrip, EveryCodePoint) {
  unsigned char bytes[5] = {};
  uint16_t units[3] = {};
  EXPECT_EQ(-1, ISO10646ToUTF8(0x110000, bytes));
  EXPECT_EQ(-1, ISO10646ToUTF8(-1, bytes));
  EXPECT_EQ(2, ISO10646ToUTF8(0, bytes) + ISO10646ToUTF16(0, units));  // the lowest is one
  EXPECT_EQ(-1, ISO10646ToUTF16(0x110000, units));
  EXPECT_EQ(-2, ISO10646ToUTF16('a', nullptr));
  for (uint32_t code_point = 1; code_point <= 0x10FFFF; ++code_point) {
    int length = ISO10646ToUTF8(static_cast<int32_t>(code_point), bytes);
    ASSERT_EQ(code_point < 0x80 ? 1 : code_point < 0x800 ? 2 : code_point < 0x10000 ? 3 : 4,
              length);
    ASSERT_EQ(static_cast<size_t>(length), UTF8StringLen(bytes));
    uint32_t decoded = 0;
    ASSERT_EQ(length, UTF8StringToISO646Char(bytes, 0, &decoded));
    ASSERT_EQ(code_point, decoded);
    length = ISO10646ToUTF16(code_point, units);
    ASSERT_EQ(code_point < 0x10000 ? 1 : 2, length);
    if (code_point >= 0xD800 && code_point <= 0xDFFF) continue;
    ASSERT_EQ(length, UTF16StringToISO10646Char(units, 0, &decoded));
    ASSERT_EQ(code_point, decoded);
  }
}

// From UTF-8 the capacity leaves the terminator out, to UTF-8 it counts it.
TEST(UTF8AndVorQString, CapacityWithAndWithoutTheTerminator) {
  const auto* abc = reinterpret_cast<const unsigned char*>("abc");
  char out[4] = "xyz";
  auto* bytes = reinterpret_cast<unsigned char*>(out);
  EXPECT_EQ(-1, UTF8StringToVorQString(abc, out, 2));
  EXPECT_EQ(-1, VorQStringToUTF8String("abc", bytes, 3));
  EXPECT_STREQ("xyz", out);
  EXPECT_EQ(4, UTF8StringToVorQString(abc, out, 3));
  EXPECT_STREQ("abc", out);
  EXPECT_EQ(4, VorQStringToUTF8String("abd", bytes, 4));
  EXPECT_STREQ("abd", out);
  EXPECT_EQ(1, UTF8StringToVorQString(abc + 3, out, 0));
  EXPECT_EQ(-2, UTF8StringToVorQString(nullptr, out, 3));
}

}  // namespace
