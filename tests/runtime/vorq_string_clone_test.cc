#include "runtime/text/vorq_string_clone.h"

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

const std::string kTooLong(kVorQStringLimit, 'a');

// What a clone gives, freed again; "(null)" for none.
std::string Taken(void* clone) {
  if (!clone)
    return "(null)";
  std::string text(static_cast<char*>(clone));
  VorQStringDeallocate(static_cast<char*>(clone));
  return text;
}

TEST(VorQClone, NullEmptyAndTooLongRows) {
  struct Row {
    void* (*clone)(const char*);
    const char* for_null;
    const char* for_empty;
  } rows[] = {
      {[](const char* t) -> void* { return VorQCloneString(t); }, "", ""},
      {[](const char* t) -> void* { return VorQStringToChar(t); }, "(null)",
       ""},
      {[](const char* t) -> void* { return VorQStringToUnsignedChar(t); },
       "(null)", ""},
      {[](const char* t) -> void* {
         return VorQStringCharStringToVorQString(t);
       },
       "", "(null)"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.for_null, Taken(row.clone(nullptr)));
    EXPECT_EQ(row.for_empty, Taken(row.clone("")));
    EXPECT_EQ(row.for_empty, Taken(row.clone(kTooLong.c_str())));
    EXPECT_EQ("abc", Taken(row.clone("abc")));
  }
}

TEST(VorQClone, ExFormsFailWhenTheirArenaRunsOut) {
  MemoryHandle arena = VorQMemInit(64);
  ASSERT_NE(0u, arena);
  const char* big = kTooLong.c_str() + kTooLong.size() - 100;
  EXPECT_EQ(nullptr, VorQStringExClone(big, arena));
  EXPECT_EQ(nullptr, VorQStringExToChar(big, arena));
  EXPECT_EQ(nullptr, VorQStringExToUnsignedChar(big, arena));
  EXPECT_EQ(nullptr, VorQStringExCharStringToVorQString(big, arena));
  EXPECT_EQ(nullptr, VorQStringExCloneSubstring(big, 0, 90, arena));
  VorQString* joined = nullptr;
  EXPECT_EQ(-1, VorQStringExJoin(&joined, big, "x", arena));
  VorQString* clone = VorQStringExClone("abc", arena);
  EXPECT_STREQ("abc", clone);
  EXPECT_EQ(0, VorQStringExDeallocate(clone, arena));
  VorQMemDeInit(arena);
}

TEST(VorQCloneSubstring, Table) {
  struct Case {
    const char* text;
    int start;
    int count;
    const char* expected;
  } cases[] = {
      {"abc", 1, 2, "bc"},      {"abc", 2, 2, "(null)"},
      {"abc", 3, 0, ""},        {"abc", -1, 1, "(null)"},
      {"abc", 0, -1, "(null)"}, {"abc", 1, 0x7FFFFFFF, "(null)"},
      {"", 0, 0, "(null)"},     {kTooLong.c_str(), 0, 1, "(null)"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.expected, Taken(VorQCloneSubstring(c.text, c.start, c.count)))
        << c.start << " " << c.count;
  }
}

TEST(VorQStringJoin, JoinsTwoParts) {
  VorQString* joined = nullptr;
  ASSERT_EQ(0, VorQStringJoin(&joined, "ab", "cd"));
  EXPECT_EQ("abcd", Taken(joined));
  ASSERT_EQ(0, VorQStringJoin(&joined, kTooLong.c_str(), "cd"));
  EXPECT_EQ("cd", Taken(joined));
  EXPECT_EQ(-2, VorQStringJoin(nullptr, "a", "b"));
  EXPECT_EQ(-2, VorQStringJoin(&joined, nullptr, "b"));
  EXPECT_EQ(-2, VorQStringJoin(&joined, "a", nullptr));
}

}  // namespace
