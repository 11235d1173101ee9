#include "runtime/text/unicode_conversions.h"

#include <stdint.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kUnset = 0xDEADBEEF;

// Inputs live in vectors of exactly their size, so a read past them is caught.
TEST(UTF8StringToISO646Char, DecodesByTheLeadByteAndStopsAtTheTerminator) {
  struct Case {
    std::vector<unsigned char> text;
    int consumed;
    uint32_t code_point;
  } cases[] = {
      {{0x41, 0}, 1, 0x41},
      {{0xE2, 0x82, 0xAC, 0}, 3, 0x20AC},
      {{0xF0, 0x9F, 0x98, 0x80, 0}, 4, 0x1F600},
      {{0xC0, 0x80, 0}, 2, 0},  // Overlong forms and bad followers pass.
      {{0xC3, 0x41, 0}, 2, 0xC1},
      {{0xF7, 0xBF, 0xBF, 0xBF, 0}, 4, 0x1FFFFF},
      {{0x80, 0}, 0, kUnset},
      {{0xF8, 0x80, 0x80, 0x80, 0x80, 0}, 0, kUnset},
      {{0xF0, 0}, 0, kUnset},
      {{0xF0, 0x9F, 0x98, 0}, 0, kUnset},
  };
  for (const Case& c : cases) {
    uint32_t code_point = kUnset;
    EXPECT_EQ(c.consumed,
              UTF8StringToISO646Char(c.text.data(), 0, &code_point));
    EXPECT_EQ(c.code_point, code_point);
  }
  EXPECT_EQ(-2, UTF8StringToISO646Char(nullptr, 0, nullptr));
}

TEST(UTF8StringToISO10646, RepeatsTheLastCodePointForStrayBytes) {
  struct Case {
    std::vector<unsigned char> text;
    std::vector<uint32_t> expected;
  } cases[] = {
      {{0x41, 0x80, 0x42, 0}, {0x41, 0x41, 0x42}},
      {{0x80, 0}, {0}},
      {{0}, {}},
      {{'a', 0xF0, 0x9F, 0}, {'a', 'a', 'a'}},
  };
  for (const Case& c : cases) {
    std::vector<uint32_t> out(8, kUnset);
    out.resize(UTF8StringToISO10646(c.text.data(), out.data()));
    EXPECT_EQ(c.expected, out);
  }
}

TEST(UTF16StringToISO10646Char, DecodesByTheLeadUnit) {
  struct Case {
    std::vector<uint16_t> text;
    int consumed;
    uint32_t code_point;
  } cases[] = {
      {{0xFFFF, 0}, 1, 0xFFFF},
      {{0xD83D, 0xDE00, 0}, 2, 0x1F600},
      {{0xDC00, 0}, -1, kUnset},
      {{0xD83D, 0}, -1, kUnset},  // Cut short by the terminator.
  };
  for (const Case& c : cases) {
    uint32_t code_point = kUnset;
    EXPECT_EQ(c.consumed,
              UTF16StringToISO10646Char(c.text.data(), 0, &code_point));
    EXPECT_EQ(c.code_point, code_point);
  }
}

TEST(UTF16StringToISO10646, StopsAtALowSurrogateKeepingWhatCameBefore) {
  const std::vector<uint16_t> text = {'a', 0xD83D, 0xDE00, 0xDC00, 'b', 0};
  uint32_t out[4] = {kUnset, kUnset, kUnset, kUnset};
  EXPECT_EQ(-1, UTF16StringToISO10646(text.data(), out));
  EXPECT_EQ('a', out[0]);
  EXPECT_EQ(0x1F600u, out[1]);
  EXPECT_EQ(kUnset, out[2]);
  EXPECT_EQ(0, UTF16StringToISO10646(nullptr, out));
  std::vector<uint16_t> too_long(kVorQStringLimit + 1, 'a');
  too_long.back() = 0;
  EXPECT_EQ(0, UTF16StringToISO10646(too_long.data(), out));
}

TEST(ISO10646ToUTF8, WritesOneToFourBytes) {
  const std::pair<int32_t, int> cases[] = {
      {0x7F, 1},    {0x80, 2},     {0x7FF, 2},     {0x800, 3}, {0xFFFF, 3},
      {0x10000, 4}, {0x10FFFF, 4}, {0x110000, -1}, {-1, -1}};
  for (const auto& [code_point, length] : cases) {
    unsigned char out[4];
    EXPECT_EQ(length, ISO10646ToUTF8(code_point, out)) << code_point;
  }
}

TEST(ISO10646ToUTF16, SurrogatesPassAndTheRangeEnds) {
  uint16_t out[2] = {0, 0};
  EXPECT_EQ(1, ISO10646ToUTF16(0xD800, out));
  EXPECT_EQ(0xD800, out[0]);
  EXPECT_EQ(-1, ISO10646ToUTF16(0x110000, out));
  EXPECT_EQ(-2, ISO10646ToUTF16('a', nullptr));
}

TEST(UnicodeRoundTrip, EveryCodePoint) {
  for (uint32_t code_point = 1; code_point <= 0x10FFFF; ++code_point) {
    unsigned char bytes[5] = {};
    int length = ISO10646ToUTF8(static_cast<int32_t>(code_point), bytes);
    ASSERT_EQ(static_cast<size_t>(length), UTF8StringLen(bytes));
    uint32_t decoded = 0;
    ASSERT_EQ(length, UTF8StringToISO646Char(bytes, 0, &decoded));
    ASSERT_EQ(code_point, decoded);
    if (code_point >= 0xD800 && code_point <= 0xDFFF)
      continue;
    uint16_t units[3] = {};
    length = ISO10646ToUTF16(code_point, units);
    ASSERT_EQ(code_point < 0x10000 ? 1 : 2, length);
    ASSERT_EQ(length, UTF16StringToISO10646Char(units, 0, &decoded));
    ASSERT_EQ(code_point, decoded);
  }
}

TEST(UTF8StringToVorQString, CapacityExcludesTheTerminator) {
  const auto* abc = reinterpret_cast<const unsigned char*>("abc");
  char out[4] = "xyz";
  EXPECT_EQ(-1, UTF8StringToVorQString(abc, out, 2));
  EXPECT_STREQ("xyz", out);
  EXPECT_EQ(4, UTF8StringToVorQString(abc, out, 3));
  EXPECT_STREQ("abc", out);
  EXPECT_EQ(1, UTF8StringToVorQString(abc + 3, out, 0));
  EXPECT_STREQ("", out);
  EXPECT_EQ(-2, UTF8StringToVorQString(nullptr, out, 3));
}

TEST(VorQStringToUTF8String, CapacityIncludesTheTerminator) {
  const std::string too_long(kVorQStringLimit, 'a');
  unsigned char out[4] = {'x', 'y', 'z', 0};
  EXPECT_EQ(-1, VorQStringToUTF8String("abc", out, 3));
  EXPECT_EQ('x', out[0]);
  EXPECT_EQ(4, VorQStringToUTF8String("abc", out, 4));
  EXPECT_STREQ("abc", reinterpret_cast<char*>(out));
  EXPECT_EQ(1, VorQStringToUTF8String(nullptr, out, 1));
  EXPECT_EQ(0, out[0]);
  // Too long text is empty: a terminator only.
  out[1] = 'x';
  EXPECT_EQ(-1, VorQStringToUTF8String(too_long.c_str(), out, 0));
  EXPECT_EQ(1, VorQStringToUTF8String(too_long.c_str(), out, 2));
  EXPECT_EQ(0, out[0]);
  EXPECT_EQ('x', out[1]);
}

}  // namespace
