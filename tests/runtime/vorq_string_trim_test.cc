#include "runtime/text/vorq_string_trim.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(VorQStringRTrim, ClearsTrailingSpacesOnly) {
  struct Case {
    const char* text;
    const char* expected;
  } cases[] = {{"   ", ""},  {"a\t ", "a\t"}, {"a b  ", "a b"},
               {"ab", "ab"}, {" a", " a"},    {"", ""}};
  for (const Case& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(0, VorQStringRTrim(text.data()));
    EXPECT_STREQ(c.expected, text.c_str());
  }
  std::string padded = "ab  ";
  EXPECT_EQ(0, VorQStringExRTrim(padded.data()));
  EXPECT_EQ(std::string("ab\0\0", 4), padded);
  EXPECT_EQ(0, VorQStringRTrim(nullptr));
}

TEST(VorQStringRTrim, TooLongTextStays) {
  std::string text(kVorQStringLimit, ' ');
  EXPECT_EQ(0, VorQStringRTrim(text.data()));
  EXPECT_EQ(std::string(kVorQStringLimit, ' '), text);
}

TEST(VorQStringReverse, ReversesInPlace) {
  struct Case {
    const char* text;
    const char* expected;
  } cases[] = {{"abc", "cba"}, {"ab", "ba"}, {"a", "a"}, {"", ""}};
  for (const Case& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(text.data(), VorQString_reverse(text.data()));
    EXPECT_STREQ(c.expected, text.c_str());
  }
  EXPECT_EQ(nullptr, VorQString_reverse(nullptr));
  std::string too_long(kVorQStringLimit, 'a');
  too_long[0] = 'b';
  VorQString_reverse(too_long.data());
  EXPECT_EQ('b', too_long[0]);
}

}  // namespace
