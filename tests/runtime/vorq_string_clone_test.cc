#include "runtime/text/vorq_string_clone.h"

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

const std::string kTooLong(kVorQStringLimit, 'a');

// The text a clone function gives, freed; "(null)" for none.
template <typename Clone>
std::string Cloned(Clone clone, const char* text) {
  auto* result = clone(text);
  if (!result)
    return "(null)";
  std::string copy(reinterpret_cast<const char*>(result));
  VorQStringDeallocate(reinterpret_cast<char*>(result));
  return copy;
}

TEST(VorQClone, NullEmptyAndTooLongRows) {
  struct Row {
    std::string (*clone)(const char*);
    const char* for_null;
    const char* for_empty;
  } rows[] = {
      {[](const char* t) { return Cloned(VorQCloneString, t); }, "", ""},
      {[](const char* t) { return Cloned(VorQStringToChar, t); }, "(null)", ""},
      {[](const char* t) { return Cloned(VorQStringToUnsignedChar, t); },
       "(null)", ""},
      {[](const char* t) {
         return Cloned(VorQStringCharStringToVorQString, t);
       },
       "", "(null)"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.for_null, row.clone(nullptr));
    EXPECT_EQ(row.for_empty, row.clone(""));
    EXPECT_EQ(row.for_empty, row.clone(kTooLong.c_str()));
    EXPECT_EQ("abc", row.clone("abc"));
  }
}

TEST(VorQClone, ExFormsUseTheirHandleAndFailWhenItRunsOut) {
  MemoryHandle arena = VorQMemInit(64);
  ASSERT_NE(0u, arena);
  VorQString* clone = VorQStringExClone("abc", arena);
  ASSERT_NE(nullptr, clone);
  EXPECT_STREQ("abc", clone);
  EXPECT_EQ(0, VorQStringExDeallocate(clone, arena));
  const std::string big(100, 'b');
  EXPECT_EQ(nullptr, VorQStringExClone(big.c_str(), arena));
  EXPECT_EQ(nullptr, VorQStringExToChar(big.c_str(), arena));
  EXPECT_EQ(nullptr, VorQStringExToUnsignedChar(big.c_str(), arena));
  EXPECT_EQ(nullptr, VorQStringExCharStringToVorQString(big.c_str(), arena));
  EXPECT_EQ(nullptr, VorQStringExCloneSubstring(big.c_str(), 0, 90, arena));
  VorQString* joined = nullptr;
  EXPECT_EQ(-1, VorQStringExJoin(&joined, big.c_str(), "x", arena));
  VorQMemDeInit(arena);
}

TEST(VorQCloneSubstring, Table) {
  struct Case {
    const char* text;
    int start;
    int count;
    const char* expected;
  } cases[] = {
      {"abc", 1, 2, "bc"},
      {"abc", 2, 2, "(null)"},
      {"abc", 0, 3, "abc"},
      {"abc", 3, 0, ""},
      {"abc", -1, 1, "(null)"},
      {"abc", 0, -1, "(null)"},
      {"abc", 1, 0x7FFFFFFF, "(null)"},
      {"", 0, 0, "(null)"},
      {nullptr, 0, 0, "(null)"},
      {kTooLong.c_str(), 0, 1, "(null)"},
  };
  for (const Case& c : cases) {
    auto substring = [&c](const char* text) {
      return VorQCloneSubstring(text, c.start, c.count);
    };
    EXPECT_EQ(c.expected, Cloned(substring, c.text))
        << c.start << " " << c.count;
  }
}

TEST(VorQStringJoin, JoinsTwoParts) {
  VorQString* joined = nullptr;
  ASSERT_EQ(0, VorQStringJoin(&joined, "ab", "cd"));
  EXPECT_STREQ("abcd", joined);
  VorQStringDeallocate(joined);
  ASSERT_EQ(0, VorQStringExJoin(&joined, kTooLong.c_str(), "cd", 0));
  EXPECT_STREQ("cd", joined);
  VorQStringExDeallocate(joined, 0);
  ASSERT_EQ(0, VorQStringJoin(&joined, "", ""));
  EXPECT_STREQ("", joined);
  VorQStringDeallocate(joined);
  EXPECT_EQ(-2, VorQStringJoin(nullptr, "a", "b"));
  EXPECT_EQ(-2, VorQStringJoin(&joined, nullptr, "b"));
  EXPECT_EQ(-2, VorQStringJoin(&joined, "a", nullptr));
}

}  // namespace
