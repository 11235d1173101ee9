#include "runtime/text/vorq_string_concat.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(VorQStringCat, AppendsBehindTheText) {
  for (auto cat : {VorQStringCat, VorQStringExCat}) {
    char destination[8] = "ab";
    EXPECT_EQ(0, cat(destination, "cd"));
    EXPECT_STREQ("abcd", destination);
    EXPECT_EQ(-2, cat(nullptr, "cd"));
  }
}

TEST(VorQStringCat, NothingToAppendFails) {
  const std::string too_long(kVorQStringLimit, 'a');
  char destination[8] = "ab";
  EXPECT_EQ(-1, VorQStringCat(destination, ""));
  EXPECT_EQ(-1, VorQStringCat(destination, nullptr));
  EXPECT_EQ(-1, VorQStringCat(destination, too_long.c_str()));
  EXPECT_STREQ("ab", destination);
}

TEST(VorQStringCat, TooLongDestinationIsWrittenFromItsStart) {
  std::string destination(kVorQStringLimit + 1, 'a');
  EXPECT_EQ(0, VorQStringCat(destination.data(), "xy"));
  EXPECT_STREQ("xy", destination.c_str());
}

}  // namespace
