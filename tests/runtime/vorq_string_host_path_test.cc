#include "runtime/text/vorq_string_host_path.h"

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

TEST(VorQStringConvertPathToHost, Table) {
  struct Case {
    const char* source;
    const char* expected;
    int result;
  } cases[] = {
      {"C:\\dir\\file.mkv", "C:/dir/file.mkv", 0},
      {"\\\\server\\share\\a.mkv", "/server/share/a.mkv", 0},
      {"a\\\\b", "", -1},
      {"a//b", "", -1},
      {"//a/b", "//a/b", 0},
      {"/\\a", "//a", 0},
      {"ab/\\c", "", -1},
      {"\\\\\\x", "", -1},
      {"", "", 0},
      {nullptr, "", -1},
  };
  for (auto convert :
       {VorQStringConvertCharPathToHost, VorQStringConvertPathToHost}) {
    for (const Case& c : cases) {
      char destination[32] = "junk";
      EXPECT_EQ(c.result, convert(c.source, destination)) << c.source;
      EXPECT_STREQ(c.expected, destination) << c.source;
    }
    EXPECT_EQ(-1, convert("a", nullptr));
  }
}

TEST(VorQStringConvertPathToHost, TooLongTextConvertsAsEmpty) {
  std::string source(kVorQStringLimit, 'a');
  char destination[8] = "junk";
  EXPECT_EQ(0, VorQStringConvertPathToHost(source.c_str(), destination));
  EXPECT_STREQ("", destination);
}

TEST(VorQStringConvertPathToHost, ConvertsInPlaceAndFailsWithoutMemory) {
  char path[] = "a\\b";
  EXPECT_EQ(0, VorQStringConvertPathToHost(path, path));
  EXPECT_STREQ("a/b", path);
  MemoryHandle arena = VorQMemInit(64);
  ASSERT_NE(0u, arena);
  VorQStringMemSet(arena);
  char destination[32] = "junk";
  EXPECT_EQ(-1, VorQStringConvertPathToHost("0123456789abcdef", destination));
  EXPECT_STREQ("", destination);
  // Both blocks went back to the arena.
  EXPECT_EQ(0, VorQStringConvertPathToHost("x\\y", destination));
  EXPECT_EQ(0u, reinterpret_cast<const MemoryArena*>(arena)->entry_count);
  VorQStringMemSet(0);
  VorQMemDeInit(arena);
}

}  // namespace
