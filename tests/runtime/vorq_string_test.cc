// One test per family; Ex and Char forms forward to one implementation, so a row runs them all.
#include <stdint.h>
#include <string.h>

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"
#include "runtime/text/vorq_string.h"
#include "runtime/text/vorq_string_clone.h"
#include "runtime/text/vorq_string_compare.h"
#include "runtime/text/vorq_string_concat.h"
#include "runtime/text/vorq_string_copy.h"
#include "runtime/text/vorq_string_find.h"
#include "runtime/text/vorq_string_from_number.h"
#include "runtime/text/vorq_string_hex.h"
#include "runtime/text/vorq_string_host_path.h"
#include "runtime/text/vorq_string_sprintf.h"
#include "runtime/text/vorq_string_to_number.h"
#include "runtime/text/vorq_string_trim.h"

namespace {

// Text that reaches the limit counts as empty everywhere.
const std::string kTooLong(kVorQStringLimit, 'a');
const char* const kNull = nullptr;

// What a clone gives, freed again; "(null)" for none.
std::string Taken(void* clone) {
  if (!clone) return "(null)";
  std::string text(static_cast<char*>(clone));
  EXPECT_EQ(0, VorQStringDeallocate(static_cast<char*>(clone)));
  return text;
}

// Runs `body` with the string functions drawing from a 64-byte arena.
template <typename Body>
void WithTinyArena(Body body) {
  MemoryHandle arena = VorQMemInit(64);
  VorQStringMemSet(arena);
  body(arena);
  VorQStringMemSet(0);
  VorQMemDeInit(arena);
}

TEST(VorQMem, ZeroFilledBlocksFromArenaOrHeapWithoutFallBack) {
  EXPECT_EQ(0u, VorQMemInit(2 * 4 + 27));
  EXPECT_EQ(-2, VorQMemDeInit(0));
  MemoryHandle arena = VorQMemInit(256);
  for (MemoryHandle handle : {arena, MemoryHandle{0}}) {
    for (int round = 0; round < 2; ++round) {  // the second block reuses the first's bytes
      auto* block = static_cast<uint8_t*>(VorQMemAlloc(100, handle));
      for (int i = 0; i < 100; ++i) ASSERT_EQ(0, block[i]);
      memset(block, 0xFF, 100);
      EXPECT_EQ(0, VorQMemFree(block, handle));
    }
    EXPECT_EQ(-2, VorQMemFree(nullptr, handle));
  }
  EXPECT_EQ(nullptr, VorQMemAlloc(256, arena));
  EXPECT_EQ(0, VorQMemDeInit(arena));
}

TEST(VorQString, LengthCloneSubstringAndJoin) {
  for (auto length : {VorQStringLen, VorQStringCharLen, VorQStringExLen, VorQStringExCharLen}) {
    EXPECT_EQ(0, length(nullptr) + length(kTooLong.c_str()));
    EXPECT_EQ(kVorQStringLimit - 1, length(kTooLong.c_str() + 1));
  }
  EXPECT_EQ(nullptr, VorQStringAllocate(0));
  EXPECT_EQ(-1, VorQStringDeallocate(nullptr));
  const struct {
    void* (*clone)(const char*);
    const char *for_null, *for_empty;
  } clones[] = {{[](const char* t) -> void* { return VorQCloneString(t); }, "", ""},
                {[](const char* t) -> void* { return VorQStringToChar(t); }, "(null)", ""},
                {[](const char* t) -> void* { return VorQStringCharStringToVorQString(t); }, "",
                 "(null)"}};
  for (const auto& row : clones) {
    EXPECT_EQ(row.for_null, Taken(row.clone(nullptr)));
    EXPECT_EQ(row.for_empty, Taken(row.clone("")));
    EXPECT_EQ("abc", Taken(row.clone("abc")));
  }
  const struct {
    const char* text;
    int start, count;
    const char* expected;
  } substrings[] = {{"abc", 1, 2, "bc"}, {"abc", 2, 2, "(null)"}, {"abc", 3, 0, ""},
                    {"abc", -1, 1, "(null)"}, {"abc", 1, 0x7FFFFFFF, "(null)"}, {"abc", 0, 2, "ab"},
                    {kTooLong.c_str(), 0, 1, "(null)"}};
  for (const auto& c : substrings)
    EXPECT_EQ(c.expected, Taken(VorQCloneSubstring(c.text, c.start, c.count))) << c.start;
  VorQString* joined = nullptr;
  ASSERT_EQ(0, VorQStringJoin(&joined, kTooLong.c_str(), "cd"));
  EXPECT_EQ("cd", Taken(joined));
  EXPECT_EQ(-6, VorQStringJoin(&joined, nullptr, "b") + VorQStringJoin(&joined, "a", nullptr) +
                    VorQStringJoin(nullptr, "a", "b"));
  WithTinyArena([&](MemoryHandle arena) {  // 100 bytes don't fit
    const char* big = kTooLong.c_str() + kTooLong.size() - 100;
    EXPECT_EQ(nullptr, VorQStringExClone(big, arena));
    EXPECT_EQ(-1, VorQStringExJoin(&joined, big, "x", arena));
  });
}

TEST(VorQString, CompareConcatenateAndCopy) {
  const auto nCmp = [](const char* a, const char* b) { return VorQStringNCmp(a, b, 8); };
  const auto nCaseCmp = [](const char* a, const char* b) { return VorQStringNCaseCmp(a, b, 8); };
  for (int (*compare)(const char*, const char*) :
       {VorQStringCmp, VorQStringExCmp, VorQStringCaseCmp, VorQStringExCaseCmp, +nCmp, +nCaseCmp}) {
    EXPECT_EQ(0, compare(nullptr, nullptr));
    EXPECT_GT(0, compare(nullptr, ""));
    EXPECT_GT(0, compare("abc", "abd"));
  }
  EXPECT_EQ(0, VorQStringExNCaseCmp("ABcx", "abCy", 3));
  EXPECT_EQ(-1, VorQStringCmpChar("a", nullptr));
  char destination[8] = "ab";
  EXPECT_EQ(0, VorQStringExCat(destination, "cd"));
  EXPECT_EQ(-2, VorQStringCat(nullptr, "cd"));
  for (const char* nothing : {"", kNull, kTooLong.c_str()}) {
    EXPECT_EQ(-1, VorQStringCat(destination, nothing));
    EXPECT_EQ(-1, VorQStringCpyVorQStringToChar(destination, nothing));
  }
  EXPECT_STREQ("abcd", destination);
  EXPECT_EQ(0, VorQStringExCpyVorQStringToChar(destination, "xy"));
  EXPECT_STREQ("xy", destination);
  for (auto copy : {VorQStringCpy, VorQStringExCpy, VorQStringCpyCharToVorQString,
                    VorQStringExCpyCharToVorQString}) {
    for (const char* source : {"", kNull, kTooLong.c_str(), "abc"}) {
      char copied[8] = "xyzxyz";
      EXPECT_EQ(0, copy(copied, source));
      EXPECT_STREQ(source == kTooLong.c_str() || !source ? "" : source, copied);
    }
    EXPECT_EQ(-2, copy(nullptr, "abc"));
  }
  // ASCII stays; 0x80 is the lowest byte dropped.
  const unsigned char utf8[] = {'c', 0xC3, 0xA9, '<', 0xE2, 0x80, 0x80, 0};
  EXPECT_EQ(0, VorQStringCpyUTF8ToVorQString(destination, utf8));
  EXPECT_EQ(0, memcmp("c<\0d", destination, 4));  // ASCII only, one terminator
  char bytes[4] = "xyz";
  EXPECT_EQ(0, VorQStringCpyChar(bytes, "ab", 2));
  EXPECT_STREQ("abz", bytes);  // strncpy's rule: no terminator within the count
  EXPECT_EQ(-2, VorQStringExCpyChar(bytes, nullptr, 2));
}

TEST(VorQString, NCopyPadsAndReplaceChangesOneSpan) {
  const struct {
    const char* source;
    int count;
    const char* expected;  // six elements of the destination
  } cases[] = {{"ab", 4, "ab\0\0xx"}, {"abcdef", 3, "abcxxx"},
               {kTooLong.c_str(), 2, "\0\0xxxx"}, {"ab", -1, "xxxxxx"}};
  for (const auto& c : cases) {
    char destination[6];
    memset(destination, 'x', sizeof(destination));
    EXPECT_EQ(0, VorQStringNCpy(destination, c.source, c.count));
    EXPECT_EQ(0, memcmp(c.expected, destination, 6)) << c.count;
  }
  std::string text(2000, 'a');
  EXPECT_EQ(0, VorQStringReplace(text.c_str(), text.data(), 'a', 'b'));
  EXPECT_EQ(std::string(kVorQStringReplaceSpan, 'b') +
                std::string(2000 - kVorQStringReplaceSpan, 'a'), text);
  char destination[8] = "zzzzzzz";
  EXPECT_EQ(0, VorQStringExReplace("a.b", destination, '.', '/'));
  EXPECT_STREQ("a/bzzzz", destination);  // no terminator written
  EXPECT_EQ(-2, VorQStringReplace(nullptr, destination, '.', '/'));
}

TEST(VorQString, Find) {
  const struct {
    const char *pattern, *text;
    int start, first, at_start, last;
  } cases[] = {{"a", "abca", 1, 0, 3, 3}, {"", "abc", 1, 0, 1, 2}, {"abc", "ab", 0, -1, -1, -1},
               {"ca", "abca", 3, 2, -1, 2}, {"a", "abc", -1, 0, -1, 0}, {"", "", 0, -1, -1, -1},
               {"a", nullptr, 0, -1, -1, -1}, {nullptr, "a", 0, -1, -1, -1},
               {"a", kTooLong.c_str(), 0, -1, -1, -1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.pattern ? c.pattern : "(null)") + " " + std::to_string(c.start));
    EXPECT_EQ(c.first, VorQStringFindFirst(c.pattern, c.text));
    EXPECT_EQ(c.at_start, VorQStringExFindFirstAtIndex(c.pattern, c.text, c.start));
    EXPECT_EQ(c.last, VorQStringFindLast(c.pattern, c.text));
  }
  EXPECT_EQ(3, VorQStringSpanCompliment("abc/d", "/\\"));
  EXPECT_EQ(-2, VorQStringSpanCompliment(nullptr, "x"));
}

TEST(VorQString, NumbersToText) {
  char out[kVorQStringInt64Text];
  EXPECT_EQ(1, VorQStringItoChar(0, out));
  EXPECT_STREQ("0", out);
  EXPECT_EQ(20, VorQStringI64ToChar(INT64_MIN, out));
  EXPECT_STREQ("-9223372036854775808", out);
  for (auto format : {VorQStringItoChar, VorQStringExItoChar, VorQStringItoVorQString,
                      VorQStringExItoVorQString}) {
    EXPECT_EQ(11, format(INT32_MIN, out));
    EXPECT_STREQ("-2147483648", out);
  }
  EXPECT_EQ(0, VorQStringI64ToVorQString(12345, out, 4) + VorQStringFToVorQString(1.5, out, 0));
  EXPECT_STREQ("-2147483648", out);  // neither fits: untouched
  EXPECT_EQ(5, VorQStringExI64ToVorQString(12345, out, 5));
  EXPECT_EQ(2, VorQStringExFToVorQString(1234567.0, out, 4));
  EXPECT_STREQ("1.", out);
  EXPECT_EQ(-4, VorQStringItoChar(1, nullptr) + VorQStringFToVorQString(1.5, nullptr, 8));
}

TEST(VorQString, TextToNumbersSaturate) {
  const auto each = [](const auto& family, const char* text, auto expected) {
    for (auto parse : family) {
      decltype(expected) value{};
      EXPECT_EQ(0, parse(text, &value)) << text;
      EXPECT_EQ(expected, value) << text;
    }
  };
  using I = int (*)(const char*, int32_t*);
  const I kI[] = {VorQStringToI, VorQStringExToI, VorQStringCharToI, VorQStringExCharToI};
  each(kI, "  -42abc", -42);
  each(kI, "2147483648", INT32_MAX);
  each(kI, "-99999999999999999999999", INT32_MIN);
  const decltype(&VorQStringToUI) kU[] = {VorQStringToUI, VorQStringExCharToUI};
  each(kU, "-1", UINT32_MAX);
  each(kU, " -4294967295", 1u);
  each(kU, "-4294967296", UINT32_MAX);
  const decltype(&VorQStringToI64) kI64[] = {VorQStringToI64, VorQStringExCharToI64};
  each(kI64, "9223372036854775808", INT64_MAX);
  int32_t number = 5;
  EXPECT_EQ(-4, VorQStringToI(nullptr, &number) + VorQStringCharToI("1", nullptr));
  WithTinyArena([&](MemoryHandle) {  // no room for the clone the text forms parse
    EXPECT_EQ(-2, VorQStringToI(std::string(100, '1').c_str(), &number));
  });
}

TEST(VorQString, HexText) {
  const uint64_t kUntouched = 0xAAAA;
  const struct {
    const char* text;
    int result;
    uint64_t value;
  } cases[] = {{"0xA1F", 0, 0xA1F}, {"zzx1f", 0, 31}, {"", 0, 0},
               {"ffffffffffffffffff", 0, UINT64_MAX}, {"1123456789abcdef0", 0, 0x123456789abcdef0},
               {"1G", -1, kUntouched}, {"-5", -1, kUntouched}, {"12 ", -1, kUntouched}};
  for (const auto& c : cases) {
    for (auto parse : {VorQHexStringToUI, VorQStringExHexCharToUI}) {
      uint64_t value = kUntouched;
      EXPECT_EQ(c.result, parse(c.text, &value)) << c.text;
      EXPECT_EQ(c.value, value) << c.text;
    }
  }
  uint64_t value = 0;
  EXPECT_EQ(-8, VorQHexStringToUI(nullptr, &value) + VorQHexStringToUI("1", nullptr) +
                    VorQStringExHexCharToUI(nullptr, &value) +
                    VorQStringExHexCharToUI("1", nullptr));
  WithTinyArena([&](MemoryHandle arena) {
    EXPECT_EQ(-2, VorQHexStringExToUI(std::string(100, 'f').c_str(), &value, arena));
  });
}

TEST(VorQString, HostPath) {
  const struct {
    const char *source, *expected;
    int result;
  } cases[] = {{"C:\\dir\\file.mkv", "C:/dir/file.mkv", 0}, {"\\\\server\\s\\a", "/server/s/a", 0},
               {"a\\\\b", "", -1}, {"a//b", "", -1}, {"//a/b", "//a/b", 0}, {"/\\a", "//a", 0},
               {"ab/\\c", "", -1}, {"\\\\\\x", "", -1}, {"", "", 0}, {nullptr, "", -1}};
  for (auto convert : {VorQStringConvertCharPathToHost, VorQStringConvertPathToHost}) {
    for (const auto& c : cases) {
      char destination[32] = "junk";
      EXPECT_EQ(c.result, convert(c.source, destination)) << c.expected;
      EXPECT_STREQ(c.expected, destination) << c.expected;
    }
  }
  char path[] = "a\\b";
  EXPECT_EQ(0, VorQStringConvertPathToHost(path, path));
  EXPECT_STREQ("a/b", path);
  WithTinyArena([](MemoryHandle arena) {
    char destination[32] = "junk";
    EXPECT_EQ(-1, VorQStringConvertPathToHost("0123456789abcdef", destination));
    EXPECT_STREQ("", destination);
    EXPECT_EQ(0u, reinterpret_cast<const MemoryArena*>(arena)->entry_count);  // all blocks back
  });
}

TEST(VorQString, SprintfTrimAndReverse) {
  char buffer[8];
  memset(buffer, 'x', sizeof(buffer));
  EXPECT_EQ(0, VorQStringSprintf(buffer, 4, "%s", "abcdef"));  // one shorter than the buffer
  EXPECT_EQ(0, VorQStringSprintf(buffer + 4, 1, "x"));  // room for the terminator alone
  EXPECT_EQ(0, memcmp("ab\0\0\0xxx", buffer, 8));
  EXPECT_EQ(-2, VorQStringExSprintf(buffer, 0, "x"));
  for (const auto& [text, expected] : {std::pair<std::string, std::string>{"   ", ""},
                                       {"a\t ", "a\t"}, {" a", " a"}}) {
    std::string trimmed = text;
    EXPECT_EQ(0, VorQStringRTrim(trimmed.data()));
    EXPECT_STREQ(expected.c_str(), trimmed.c_str());
  }
  EXPECT_EQ(0, VorQStringExRTrim(nullptr) + VorQStringRTrim(nullptr));
  std::string text = "abc";
  EXPECT_EQ(text.data(), VorQString_reverse(text.data()));
  EXPECT_EQ("cba", text);
  EXPECT_EQ(nullptr, VorQString_reverse(nullptr));
}

}  // namespace
