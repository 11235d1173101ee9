#include "runtime/text/vorq_string.h"

#include <stdint.h>

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

TEST(VorQStringLen, CountsUpToTheLimit) {
  const std::string below(kVorQStringLimit - 1, 'a');
  const std::string at(kVorQStringLimit, 'a');
  for (auto length : {VorQStringLen, VorQStringCharLen, VorQStringExLen,
                      VorQStringExCharLen}) {
    EXPECT_EQ(0, length(nullptr));
    EXPECT_EQ(0, length(""));
    EXPECT_EQ(kVorQStringLimit - 1, length(below.c_str()));
    EXPECT_EQ(0, length(at.c_str()));
  }
}

TEST(VorQStringAllocate, GoesThroughTheStringHandle) {
  MemoryHandle arena = VorQMemInit(1024);
  ASSERT_NE(0u, arena);
  EXPECT_EQ(0, VorQStringMemSet(arena));
  VorQString* text = VorQStringAllocate(16);
  uintptr_t address = reinterpret_cast<uintptr_t>(text);
  EXPECT_GT(address, arena);
  EXPECT_LT(address, arena + 1024);
  EXPECT_EQ(nullptr, VorQStringCharAllocate(2048));
  EXPECT_EQ(0, VorQStringDeallocate(text));
  VorQStringMemSet(0);
  VorQMemDeInit(arena);
  EXPECT_EQ(nullptr, VorQStringAllocate(0));
  EXPECT_EQ(-1, VorQStringDeallocate(nullptr));
  EXPECT_EQ(-1, VorQStringExCharDeallocate(nullptr, 0));
}

}  // namespace
