#include "runtime/text/vorq_string_compare.h"

#include <gtest/gtest.h>

namespace {

int Sign(int value) {
  return (value > 0) - (value < 0);
}

TEST(VorQStringCmp, NullOrdersFirst) {
  for (auto compare : {VorQStringCmp, VorQStringExCmp, VorQStringCaseCmp,
                       VorQStringExCaseCmp}) {
    EXPECT_EQ(0, compare(nullptr, nullptr));
    EXPECT_EQ(-1, Sign(compare(nullptr, "")));
    EXPECT_EQ(1, Sign(compare("", nullptr)));
    EXPECT_EQ(-1, Sign(compare("abc", "abd")));
  }
  EXPECT_EQ(-1, Sign(VorQStringNCmp(nullptr, "a", 1)));
  EXPECT_EQ(0, VorQStringExNCaseCmp("ABcx", "abCy", 3));
}

TEST(VorQStringCmpChar, NullGivesMinusOne) {
  for (auto compare : {VorQStringCmpChar, VorQStringExCmpChar}) {
    EXPECT_EQ(-1, compare(nullptr, "a"));
    EXPECT_EQ(-1, compare("a", nullptr));
    EXPECT_EQ(0, compare("a", "a"));
  }
}

}  // namespace
