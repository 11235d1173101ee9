#include "runtime/memory/vorq_mem.h"

#include <stdint.h>
#include <string.h>

#include <gtest/gtest.h>

namespace {

TEST(VorQMem, InitRefusesZeroAndTooSmallSizes) {
  EXPECT_EQ(0u, VorQMemInit(0));
  EXPECT_EQ(0u, VorQMemInit(2 * 4 + 27));
  MemoryHandle handle = VorQMemInit(2 * 4 + 28);
  EXPECT_NE(0u, handle);
  EXPECT_EQ(0, VorQMemDeInit(handle));
  EXPECT_EQ(-2, VorQMemDeInit(0));
}

TEST(VorQMem, BlocksAreZeroFilledAndArenasDontFallBack) {
  MemoryHandle arena = VorQMemInit(256);
  ASSERT_NE(0u, arena);
  for (MemoryHandle handle : {arena, MemoryHandle{0}}) {
    auto* block = static_cast<uint8_t*>(VorQMemAlloc(100, handle));
    ASSERT_NE(nullptr, block);
    memset(block, 0xFF, 100);
    EXPECT_EQ(0, VorQMemFree(block, handle));
    block = static_cast<uint8_t*>(VorQMemAlloc(100, handle));
    for (int i = 0; i < 100; ++i)
      ASSERT_EQ(0, block[i]);
    EXPECT_EQ(0, VorQMemFree(block, handle));
    EXPECT_EQ(nullptr, VorQMemAlloc(0, handle));
    EXPECT_EQ(-2, VorQMemFree(nullptr, handle));
  }
  EXPECT_EQ(nullptr, VorQMemAlloc(256, arena));
  int elsewhere = 0;
  EXPECT_EQ(0, VorQMemFree(&elsewhere, arena));
  EXPECT_EQ(0, VorQMemDeInit(arena));
}

}  // namespace
