#include "runtime/text/vorq_string_sprintf.h"

#include <string.h>

#include <gtest/gtest.h>

namespace {

int LengthNeeded(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  int length = VorQStringSprintfLengthNeeded(format, arguments);
  va_end(arguments);
  return length;
}

TEST(VorQStringSprintf, CutsOneShorterThanTheBuffer) {
  char buffer[8];
  memset(buffer, 'x', sizeof(buffer));
  EXPECT_EQ(0, VorQStringSprintf(buffer, 4, "%s", "abcdef"));
  EXPECT_EQ(0, memcmp("ab\0\0xxxx", buffer, 8));
  EXPECT_EQ(0, VorQStringExSprintf(buffer, 8, "%d-%d", 12, 34));
  EXPECT_STREQ("12-34", buffer);
  EXPECT_EQ(0, VorQStringSprintf(buffer, 1, "abc"));
  EXPECT_EQ(0, buffer[0]);
}

TEST(VorQStringSprintf, RefusesMissingArguments) {
  char buffer[8] = "keep";
  EXPECT_EQ(-2, VorQStringSprintf(nullptr, 8, "x"));
  EXPECT_EQ(-2, VorQStringSprintf(buffer, 0, "x"));
  EXPECT_EQ(-2, VorQStringSprintf(buffer, -5, "x"));
  EXPECT_STREQ("keep", buffer);
}

TEST(VorQStringSprintfLengthNeeded, MeasuresTheWholeText) {
  EXPECT_EQ(6, LengthNeeded("%s", "abcdef"));
  EXPECT_EQ(0, LengthNeeded(nullptr));
}

}  // namespace
