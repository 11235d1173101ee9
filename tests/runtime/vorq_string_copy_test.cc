#include "runtime/text/vorq_string_copy.h"

#include <string.h>

#include <string>

#include <gtest/gtest.h>

namespace {

const std::string kTooLong(kVorQStringLimit, 'a');

TEST(VorQStringCpy, EmptiesTheDestinationForNothingToCopy) {
  struct Case {
    const char* source;
    const char* expected;
  } cases[] = {{"abc", "abc"}, {"", ""}, {nullptr, ""}, {kTooLong.c_str(), ""}};
  for (auto copy :
       {VorQStringCpy, VorQStringExCpy, VorQStringCpyCharToVorQString,
        VorQStringExCpyCharToVorQString}) {
    for (const Case& c : cases) {
      char destination[8] = "xyzxyz";
      EXPECT_EQ(0, copy(destination, c.source));
      EXPECT_STREQ(c.expected, destination);
    }
    EXPECT_EQ(-2, copy(nullptr, "abc"));
  }
}

TEST(VorQStringCpyVorQStringToChar, FailsForNothingToCopy) {
  for (auto copy :
       {VorQStringCpyVorQStringToChar, VorQStringExCpyVorQStringToChar}) {
    char destination[8] = "xyz";
    EXPECT_EQ(-1, copy(destination, ""));
    EXPECT_EQ(-1, copy(destination, nullptr));
    EXPECT_EQ(-1, copy(destination, kTooLong.c_str()));
    EXPECT_STREQ("xyz", destination);
    EXPECT_EQ(0, copy(destination, "ab"));
    EXPECT_STREQ("ab", destination);
    EXPECT_EQ(-2, copy(nullptr, "ab"));
  }
}

TEST(VorQStringCpyUTF8ToVorQString, KeepsOnlyASCII) {
  const unsigned char cafe[] = {'c', 'a', 'f', 0xC3, 0xA9, 0};
  const unsigned char euro[] = {'<', 0xE2, 0x82, 0xAC, '>', 0};
  char destination[8] = "xyzxyz";
  EXPECT_EQ(0, VorQStringCpyUTF8ToVorQString(destination, cafe));
  EXPECT_STREQ("caf", destination);
  EXPECT_EQ(0, VorQStringExCpyUTF8ToVorQString(destination, euro));
  EXPECT_STREQ("<>", destination);
  EXPECT_EQ(0, VorQStringCpyUTF8ToVorQString(destination, nullptr));
  EXPECT_STREQ("", destination);
}

TEST(VorQStringNCpy, PadsWithZerosAndMayLeaveNoTerminator) {
  char destination[6];
  memset(destination, 'x', sizeof(destination));
  EXPECT_EQ(0, VorQStringNCpy(destination, "ab", 4));
  EXPECT_EQ(0, memcmp("ab\0\0x", destination, 5));
  memset(destination, 'x', sizeof(destination));
  EXPECT_EQ(0, VorQStringExNCpy(destination, "abcdef", 3));
  EXPECT_EQ(0, memcmp("abcx", destination, 4));
  memset(destination, 'x', sizeof(destination));
  EXPECT_EQ(0, VorQStringNCpy(destination, kTooLong.c_str(), 2));
  EXPECT_EQ(0, memcmp("\0\0x", destination, 3));
  EXPECT_EQ(0, VorQStringNCpy(destination, "ab", -1));
  EXPECT_EQ(-2, VorQStringNCpy(nullptr, "ab", 2));
}

TEST(VorQStringCpyChar, IsStrncpyWithNullChecks) {
  char destination[4] = "xyz";
  EXPECT_EQ(0, VorQStringCpyChar(destination, "ab", 4));
  EXPECT_STREQ("ab", destination);
  EXPECT_EQ(-2, VorQStringExCpyChar(nullptr, "ab", 4));
  EXPECT_EQ(-2, VorQStringCpyChar(destination, nullptr, 4));
}

TEST(VorQStringReplace, ChangesTheFirstSpanOnlyAndWritesNoTerminator) {
  std::string text(2000, 'a');
  EXPECT_EQ(0, VorQStringReplace(text.c_str(), text.data(), 'a', 'b'));
  EXPECT_EQ(std::string(kVorQStringReplaceSpan, 'b') +
                std::string(2000 - kVorQStringReplaceSpan, 'a'),
            text);
  char destination[8] = "zzzzzzz";
  EXPECT_EQ(0, VorQStringExReplace("a.b", destination, '.', '/'));
  EXPECT_STREQ("a/bzzzz", destination);
  EXPECT_EQ(-2, VorQStringReplace(nullptr, destination, '.', '/'));
}

}  // namespace
