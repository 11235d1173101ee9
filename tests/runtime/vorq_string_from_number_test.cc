#include "runtime/text/vorq_string_from_number.h"

#include <stdint.h>
#include <string.h>

#include <gtest/gtest.h>

namespace {

TEST(VorQStringIntegerToText, Table) {
  const std::pair<int64_t, const char*> cases[] = {
      {0, "0"},
      {-7, "-7"},
      {INT32_MAX, "2147483647"},
      {INT32_MIN, "-2147483648"},
      {INT64_MAX, "9223372036854775807"},
      {INT64_MIN, "-9223372036854775808"}};
  for (const auto& [value, text] : cases) {
    const int length = static_cast<int>(strlen(text));
    char out[kVorQStringInt64Text];
    EXPECT_EQ(length, VorQStringI64ToChar(value, out));
    EXPECT_STREQ(text, out);
    EXPECT_EQ(length, VorQStringExI64ToVorQString(value, out, length));
    EXPECT_STREQ(text, out);
    if (value < INT32_MIN || value > INT32_MAX)
      continue;
    for (auto format : {VorQStringItoChar, VorQStringExItoChar,
                        VorQStringItoVorQString, VorQStringExItoVorQString}) {
      char out32[kVorQStringIntText];
      EXPECT_EQ(length, format(static_cast<int32_t>(value), out32));
      EXPECT_STREQ(text, out32);
    }
  }
}

TEST(VorQStringI64ToVorQString, LeavesTheDestinationWhenItDoesNotFit) {
  char out[8] = "keep";
  EXPECT_EQ(0, VorQStringI64ToVorQString(12345, out, 4));
  EXPECT_STREQ("keep", out);
  EXPECT_EQ(5, VorQStringI64ToVorQString(12345, out, 5));
  EXPECT_STREQ("12345", out);
  EXPECT_EQ(-2, VorQStringI64ToVorQString(1, nullptr, 5));
  EXPECT_EQ(-2, VorQStringItoChar(1, nullptr));
}

TEST(VorQStringFloatToText, UsesSixSignificantDigits) {
  char out[32];
  EXPECT_EQ(11, VorQStringFToChar(1234567.0, out));
  EXPECT_STREQ("1.23457e+06", out);
  EXPECT_EQ(-2, VorQStringFToChar(1.5, nullptr));
  EXPECT_EQ(11, VorQStringFToVorQString(1234567.0, out, sizeof(out)));
  EXPECT_EQ(2, VorQStringExFToVorQString(1234567.0, out, 4));
  EXPECT_STREQ("1.", out);
  EXPECT_EQ(0, VorQStringFToVorQString(1.5, out, 1));
  EXPECT_EQ(0, VorQStringFToVorQString(1.5, out, 0));
  EXPECT_EQ(-2, VorQStringFToVorQString(1.5, nullptr, 8));
}

}  // namespace
