#include "runtime/text/vorq_string_find.h"

#include <string>

#include <gtest/gtest.h>

namespace {

struct FindCase {
  const char* pattern;
  const char* text;
  int start;
  int first;     // VorQStringFindFirst
  int at_start;  // VorQStringFindFirstAtIndex from `start`
  int last;      // VorQStringFindLast
};

const std::string kTooLong(kVorQStringLimit, 'a');

TEST(VorQStringFind, Table) {
  const FindCase cases[] = {
      {"a", "abca", 1, 0, 3, 3},
      {"bc", "abcbc", 2, 1, 3, 3},
      {"", "abc", 1, 0, 1, 2},
      {"abc", "ab", 0, -1, -1, -1},
      {"ca", "abca", 3, 2, -1, 2},
      {"x", "abc", 0, -1, -1, -1},
      {"a", "abc", 3, 0, -1, 0},
      {"a", "abc", -1, 0, -1, 0},
      {"a", "", 0, -1, -1, -1},
      {"", "", 0, -1, -1, -1},
      {"a", nullptr, 0, -1, -1, -1},
      {nullptr, "abc", 0, -1, -1, -1},
      {"a", kTooLong.c_str(), 0, -1, -1, -1},
  };
  for (const FindCase& c : cases) {
    SCOPED_TRACE(std::string(c.pattern ? c.pattern : "(null)") + " in " +
                 (c.text ? std::string(c.text).substr(0, 8) : "(null)"));
    EXPECT_EQ(c.first, VorQStringFindFirst(c.pattern, c.text));
    EXPECT_EQ(c.first, VorQStringExFindFirst(c.pattern, c.text));
    EXPECT_EQ(c.at_start,
              VorQStringFindFirstAtIndex(c.pattern, c.text, c.start));
    EXPECT_EQ(c.at_start,
              VorQStringExFindFirstAtIndex(c.pattern, c.text, c.start));
    EXPECT_EQ(c.last, VorQStringFindLast(c.pattern, c.text));
    EXPECT_EQ(c.last, VorQStringExFindLast(c.pattern, c.text));
  }
}

TEST(VorQStringSpanCompliment, IsStrcspn) {
  EXPECT_EQ(3, VorQStringSpanCompliment("abc/d", "/\\"));
  EXPECT_EQ(3, VorQStringSpanCompliment("abc", "xyz"));
  EXPECT_EQ(-2, VorQStringSpanCompliment(nullptr, "x"));
  EXPECT_EQ(-2, VorQStringSpanCompliment("abc", nullptr));
}

}  // namespace
