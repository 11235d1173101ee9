#include "runtime/text/vorq_string_from_number.h"

#include <stdint.h>
#include <string.h>

#include <gtest/gtest.h>

namespace {

TEST(VorQStringIntegerToText, Table) {
  struct Case {
    int64_t value;
    const char* text;
  } cases[] = {{0, "0"},
               {7, "7"},
               {-7, "-7"},
               {12345, "12345"},
               {INT32_MAX, "2147483647"},
               {INT32_MIN, "-2147483648"},
               {INT64_MAX, "9223372036854775807"},
               {INT64_MIN, "-9223372036854775808"}};
  for (const Case& c : cases) {
    const int length = static_cast<int>(strlen(c.text));
    char out[kVorQStringInt64Text];
    EXPECT_EQ(length, VorQStringI64ToChar(c.value, out));
    EXPECT_STREQ(c.text, out);
    EXPECT_EQ(length, VorQStringExI64ToVorQString(c.value, out, length));
    EXPECT_STREQ(c.text, out);
    if (c.value < INT32_MIN || c.value > INT32_MAX)
      continue;
    const auto value32 = static_cast<int32_t>(c.value);
    for (auto format : {VorQStringItoChar, VorQStringExItoChar,
                        VorQStringItoVorQString, VorQStringExItoVorQString}) {
      char out32[kVorQStringIntText];
      EXPECT_EQ(length, format(value32, out32));
      EXPECT_STREQ(c.text, out32);
    }
  }
}

TEST(VorQStringI64ToVorQString, LeavesTheDestinationWhenItDoesNotFit) {
  char out[8] = "keep";
  EXPECT_EQ(0, VorQStringI64ToVorQString(12345, out, 4));
  EXPECT_STREQ("keep", out);
  EXPECT_EQ(0, VorQStringI64ToVorQString(1, out, -1));
  EXPECT_EQ(5, VorQStringI64ToVorQString(12345, out, 5));
  EXPECT_STREQ("12345", out);
  EXPECT_EQ(-2, VorQStringI64ToVorQString(1, nullptr, 5));
  EXPECT_EQ(-2, VorQStringItoChar(1, nullptr));
}

TEST(VorQStringFloatToText, UsesSixSignificantDigits) {
  char out[32];
  EXPECT_EQ(11, VorQStringFToChar(1234567.0, out));
  EXPECT_STREQ("1.23457e+06", out);
  EXPECT_EQ(3, VorQStringExFToChar(1.5, out));
  EXPECT_EQ(-2, VorQStringFToChar(1.5, nullptr));
  EXPECT_EQ(11, VorQStringFToVorQString(1234567.0, out, sizeof(out)));
  EXPECT_STREQ("1.23457e+06", out);
  EXPECT_EQ(2, VorQStringExFToVorQString(1234567.0, out, 4));
  EXPECT_STREQ("1.", out);
  EXPECT_EQ(0, VorQStringFToVorQString(1.5, out, 1));
  EXPECT_EQ(0, VorQStringFToVorQString(1.5, out, 0));
  EXPECT_EQ(-2, VorQStringFToVorQString(1.5, nullptr, 8));
}

}  // namespace
