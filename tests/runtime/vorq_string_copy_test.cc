#include "runtime/text/vorq_string_copy.h"

#include <string.h>

#include <string>

#include <gtest/gtest.h>

namespace {

const std::string kTooLong(kVorQStringLimit, 'a');

TEST(VorQStringCpy, EmptiesTheDestinationForNothingToCopy) {
  for (auto copy :
       {VorQStringCpy, VorQStringExCpy, VorQStringCpyCharToVorQString,
        VorQStringExCpyCharToVorQString}) {
    for (const char* source :
         {"", static_cast<const char*>(nullptr), kTooLong.c_str(), "abc"}) {
      char destination[8] = "xyzxyz";
      EXPECT_EQ(0, copy(destination, source));
      EXPECT_STREQ(source == kTooLong.c_str() || !source ? "" : source,
                   destination);
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
  }
}

TEST(VorQStringCpyUTF8ToVorQString, KeepsOnlyASCII) {
  const unsigned char text[] = {'c', 0xC3, 0xA9, '<', 0xE2, 0x82, 0xAC, 0};
  char destination[8] = "xyzxyz";
  EXPECT_EQ(0, VorQStringCpyUTF8ToVorQString(destination, text));
  EXPECT_STREQ("c<", destination);
  EXPECT_EQ(0, VorQStringExCpyUTF8ToVorQString(destination, nullptr));
  EXPECT_STREQ("", destination);
}

TEST(VorQStringNCpy, PadsWithZerosAndMayLeaveNoTerminator) {
  struct Case {
    const char* source;
    int count;
    const char* expected;  // Six elements of the destination.
  } cases[] = {{"ab", 4, "ab\0\0xx"},
               {"abcdef", 3, "abcxxx"},
               {kTooLong.c_str(), 2, "\0\0xxxx"},
               {"ab", -1, "xxxxxx"}};
  for (const Case& c : cases) {
    char destination[6];
    memset(destination, 'x', sizeof(destination));
    EXPECT_EQ(0, VorQStringNCpy(destination, c.source, c.count));
    EXPECT_EQ(0, memcmp(c.expected, destination, 6)) << c.count;
  }
  EXPECT_EQ(-2, VorQStringExNCpy(nullptr, "ab", 2));
  EXPECT_EQ(-2, VorQStringCpyChar(nullptr, "ab", 2));
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
