#include "runtime/text/unicode_conversions.h"

#include <stdint.h>

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kUnset = 0xDEADBEEF;

// Heap copies of exactly the bytes given, so that a read past them is caught.
std::unique_ptr<unsigned char[]> Bytes(
    std::initializer_list<unsigned char> bytes) {
  auto copy = std::make_unique<unsigned char[]>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), copy.get());
  return copy;
}

std::unique_ptr<uint16_t[]> Units(std::initializer_list<uint16_t> units) {
  auto copy = std::make_unique<uint16_t[]>(units.size());
  std::copy(units.begin(), units.end(), copy.get());
  return copy;
}

TEST(UTF8StringToISO646Char, DecodesByTheLeadByte) {
  struct Case {
    std::initializer_list<unsigned char> bytes;
    int consumed;
    uint32_t code_point;
  } cases[] = {
      {{0x41, 0}, 1, 0x41},
      {{0xC3, 0xA9, 0}, 2, 0xE9},
      {{0xE2, 0x82, 0xAC, 0}, 3, 0x20AC},
      {{0xF0, 0x9F, 0x98, 0x80, 0}, 4, 0x1F600},
      {{0xC0, 0x80, 0}, 2, 0},  // Overlong forms pass.
      {{0xF7, 0xBF, 0xBF, 0xBF, 0}, 4, 0x1FFFFF},
      {{0xC3, 0x41, 0}, 2, 0xC1},  // Following bytes aren't tested.
      {{0x80, 0}, 0, kUnset},
      {{0xBF, 0}, 0, kUnset},
      {{0xF8, 0x80, 0x80, 0x80, 0x80, 0}, 0, kUnset},
      // Cut short by the terminator: nothing behind it is read.
      {{0xF0, 0}, 0, kUnset},
      {{0xF0, 0x9F, 0x98, 0}, 0, kUnset},
      {{0xE2, 0x82, 0}, 0, kUnset},
  };
  for (const Case& c : cases) {
    auto text = Bytes(c.bytes);
    uint32_t code_point = kUnset;
    EXPECT_EQ(c.consumed, UTF8StringToISO646Char(text.get(), 0, &code_point));
    EXPECT_EQ(c.code_point, code_point);
  }
  uint32_t code_point;
  EXPECT_EQ(-2, UTF8StringToISO646Char(nullptr, 0, &code_point));
}

TEST(UTF8StringToISO10646, RepeatsTheLastCodePointForStrayBytes) {
  struct Case {
    std::initializer_list<unsigned char> bytes;
    std::vector<uint32_t> expected;
  } cases[] = {
      {{0x41, 0x80, 0x42, 0}, {0x41, 0x41, 0x42}},
      {{0x80, 0}, {0}},
      {{0}, {}},
      {{0xE2, 0x82, 0xAC, 'x', 0}, {0x20AC, 'x'}},
      {{'a', 0xF0, 0x9F, 0}, {'a', 'a', 'a'}},
  };
  for (const Case& c : cases) {
    auto text = Bytes(c.bytes);
    std::vector<uint32_t> out(8, kUnset);
    int count = UTF8StringToISO10646(text.get(), out.data());
    ASSERT_GE(count, 0);
    out.resize(count);
    EXPECT_EQ(c.expected, out);
  }
}

TEST(UTF16StringToISO10646Char, DecodesByTheLeadUnit) {
  struct Case {
    std::initializer_list<uint16_t> units;
    int consumed;
    uint32_t code_point;
  } cases[] = {
      {{0x41, 0}, 1, 0x41},
      {{0xFFFF, 0}, 1, 0xFFFF},
      {{0xD83D, 0xDE00, 0}, 2, 0x1F600},
      {{0xDBFF, 0xDFFF, 0}, 2, 0x10FFFF},
      {{0xDC00, 0}, -1, kUnset},
      {{0xD83D, 0}, -1, kUnset},  // Cut short by the terminator.
  };
  for (const Case& c : cases) {
    auto text = Units(c.units);
    uint32_t code_point = kUnset;
    EXPECT_EQ(c.consumed,
              UTF16StringToISO10646Char(text.get(), 0, &code_point));
    EXPECT_EQ(c.code_point, code_point);
  }
}

TEST(UTF16StringToISO10646, StopsAtALowSurrogateKeepingWhatCameBefore) {
  auto text = Units({'a', 0xD83D, 0xDE00, 0xDC00, 'b', 0});
  uint32_t out[4] = {kUnset, kUnset, kUnset, kUnset};
  EXPECT_EQ(-1, UTF16StringToISO10646(text.get(), out));
  EXPECT_EQ('a', out[0]);
  EXPECT_EQ(0x1F600u, out[1]);
  EXPECT_EQ(kUnset, out[2]);
  EXPECT_EQ(0, UTF16StringToISO10646(nullptr, out));
  std::vector<uint16_t> too_long(kVorQStringLimit + 1, 'a');
  too_long.back() = 0;
  EXPECT_EQ(0, UTF16StringToISO10646(too_long.data(), out));
}

TEST(ISO10646ToUTF8, WritesOneToFourBytes) {
  struct Case {
    int32_t code_point;
    int length;
  } cases[] = {{0, 1},        {0x7F, 1},      {0x80, 2},   {0x7FF, 2},
               {0x800, 3},    {0xD800, 3},    {0xFFFF, 3}, {0x10000, 4},
               {0x10FFFF, 4}, {0x110000, -1}, {-1, -1}};
  for (const Case& c : cases) {
    unsigned char out[4];
    EXPECT_EQ(c.length, ISO10646ToUTF8(c.code_point, out)) << c.code_point;
  }
  EXPECT_EQ(-2, ISO10646ToUTF8('a', nullptr));
}

TEST(ISO10646ToUTF16, WritesOneOrTwoUnits) {
  uint16_t out[2] = {0, 0};
  EXPECT_EQ(2, ISO10646ToUTF16(0x1F600, out));
  EXPECT_EQ(0xD83D, out[0]);
  EXPECT_EQ(0xDE00, out[1]);
  EXPECT_EQ(1, ISO10646ToUTF16(0xD800, out));
  EXPECT_EQ(0xD800, out[0]);
  EXPECT_EQ(-1, ISO10646ToUTF16(0x110000, out));
  EXPECT_EQ(-2, ISO10646ToUTF16('a', nullptr));
}

TEST(UnicodeRoundTrip, EveryCodePointThroughUTF8) {
  for (int32_t code_point = 1; code_point <= 0x10FFFF; ++code_point) {
    unsigned char text[5] = {};
    int length = ISO10646ToUTF8(code_point, text);
    ASSERT_GT(length, 0);
    ASSERT_EQ(static_cast<size_t>(length), UTF8StringLen(text));
    uint32_t decoded = 0;
    ASSERT_EQ(length, UTF8StringToISO646Char(text, 0, &decoded));
    ASSERT_EQ(static_cast<uint32_t>(code_point), decoded);
  }
}

TEST(UnicodeRoundTrip, EveryScalarValueThroughUTF16) {
  for (uint32_t code_point = 1; code_point <= 0x10FFFF; ++code_point) {
    if (code_point >= 0xD800 && code_point <= 0xDFFF)
      continue;
    uint16_t text[3] = {};
    int length = ISO10646ToUTF16(code_point, text);
    ASSERT_EQ(code_point < 0x10000 ? 1 : 2, length);
    uint32_t decoded = 0;
    ASSERT_EQ(length, UTF16StringToISO10646Char(text, 0, &decoded));
    ASSERT_EQ(code_point, decoded);
  }
}

TEST(UnicodeRoundTrip, WholeTextThroughUTF8AndUTF16) {
  const std::vector<uint32_t> code_points = {'a',     0xE9,     0x20AC, 0xFFFD,
                                             0x1F600, 0x10FFFF, 'z'};
  std::vector<unsigned char> utf8;
  std::vector<uint16_t> utf16;
  for (uint32_t code_point : code_points) {
    unsigned char bytes[4];
    utf8.insert(
        utf8.end(), bytes,
        bytes + ISO10646ToUTF8(static_cast<int32_t>(code_point), bytes));
    uint16_t units[2];
    utf16.insert(utf16.end(), units,
                 units + ISO10646ToUTF16(code_point, units));
  }
  utf8.push_back(0);
  utf16.push_back(0);
  std::vector<uint32_t> out(code_points.size());
  EXPECT_EQ(static_cast<int>(out.size()),
            UTF8StringToISO10646(utf8.data(), out.data()));
  EXPECT_EQ(code_points, out);
  std::fill(out.begin(), out.end(), 0);
  EXPECT_EQ(static_cast<int>(out.size()),
            UTF16StringToISO10646(utf16.data(), out.data()));
  EXPECT_EQ(code_points, out);
}

TEST(UTF8StringToVorQString, CapacityExcludesTheTerminator) {
  const auto* abc = reinterpret_cast<const unsigned char*>("abc");
  const auto* empty = reinterpret_cast<const unsigned char*>("");
  char out[4] = "xyz";
  EXPECT_EQ(-1, UTF8StringToVorQString(abc, out, 2));
  EXPECT_STREQ("xyz", out);
  EXPECT_EQ(4, UTF8StringToVorQString(abc, out, 3));
  EXPECT_STREQ("abc", out);
  EXPECT_EQ(1, UTF8StringToVorQString(empty, out, 0));
  EXPECT_STREQ("", out);
  EXPECT_EQ(-2, UTF8StringToVorQString(nullptr, out, 3));
  EXPECT_EQ(0u, UTF8StringLen(nullptr));
}

TEST(VorQStringToUTF8String, CapacityIncludesTheTerminator) {
  unsigned char out[4] = {'x', 'y', 'z', 0};
  EXPECT_EQ(-1, VorQStringToUTF8String("abc", out, 3));
  EXPECT_EQ('x', out[0]);
  EXPECT_EQ(4, VorQStringToUTF8String("abc", out, 4));
  EXPECT_STREQ("abc", reinterpret_cast<char*>(out));
  EXPECT_EQ(1, VorQStringToUTF8String(nullptr, out, 1));
  EXPECT_EQ(0, out[0]);
  EXPECT_EQ(-2, VorQStringToUTF8String("abc", nullptr, 4));
}

TEST(VorQStringToUTF8String, TooLongTextGivesTheEmptyText) {
  const std::string too_long(kVorQStringLimit, 'a');
  unsigned char out[2] = {'x', 'x'};
  EXPECT_EQ(-1, VorQStringToUTF8String(too_long.c_str(), out, 0));
  EXPECT_EQ(1, VorQStringToUTF8String(too_long.c_str(), out, 2));
  EXPECT_EQ(0, out[0]);
  EXPECT_EQ('x', out[1]);
}

}  // namespace
