#include "runtime/text/vorq_string_compare.h"

#include <gtest/gtest.h>

namespace {

int Sign(int value) {
  return (value > 0) - (value < 0);
}

TEST(VorQStringCmp, OrdersLikeTheCLibrary) {
  for (auto compare : {VorQStringCmp, VorQStringExCmp}) {
    EXPECT_EQ(0, compare("abc", "abc"));
    EXPECT_EQ(-1, Sign(compare("abc", "abd")));
    EXPECT_EQ(1, Sign(compare("abc", "ab")));
    EXPECT_EQ(1, Sign(compare("b", "B")));
  }
  for (auto compare : {VorQStringCaseCmp, VorQStringExCaseCmp}) {
    EXPECT_EQ(0, compare("ABC", "abc"));
    EXPECT_EQ(-1, Sign(compare("abc", "ABD")));
  }
  EXPECT_EQ(0, VorQStringNCmp("abcx", "abcy", 3));
  EXPECT_EQ(-1, Sign(VorQStringExNCmp("abcx", "abcy", 4)));
  EXPECT_EQ(0, VorQStringNCaseCmp("ABcx", "abCy", 3));
  EXPECT_EQ(1, Sign(VorQStringExNCaseCmp("abcz", "ABCY", 4)));
}

TEST(VorQStringCmp, NullOrdersFirst) {
  for (auto compare : {VorQStringCmp, VorQStringCaseCmp}) {
    EXPECT_EQ(0, compare(nullptr, nullptr));
    EXPECT_EQ(-1, Sign(compare(nullptr, "")));
    EXPECT_EQ(1, Sign(compare("", nullptr)));
  }
  EXPECT_EQ(-1, Sign(VorQStringNCmp(nullptr, "a", 1)));
  EXPECT_EQ(1, Sign(VorQStringNCaseCmp("a", nullptr, 1)));
}

TEST(VorQStringCmpChar, NullGivesMinusOne) {
  for (auto compare : {VorQStringCmpChar, VorQStringExCmpChar}) {
    EXPECT_EQ(-1, compare(nullptr, "a"));
    EXPECT_EQ(-1, compare("a", nullptr));
    EXPECT_EQ(-1, compare(nullptr, nullptr));
    EXPECT_EQ(0, compare("a", "a"));
    EXPECT_EQ(1, Sign(compare("b", "a")));
  }
}

}  // namespace
