#include "runtime/memory/memory_arena.h"

#include <gtest/gtest.h>
#include <string.h>

#include <vector>

namespace {

// Header fields by value: with an odd alignment they may be misaligned.
MemoryArena State(MemoryHandle handle) {
  MemoryArena state;
  memcpy(&state, reinterpret_cast<const void*>(handle), sizeof(state));
  return state;
}

MemoryHandle Create(void* buffer, uint32_t size, uint8_t alignment) {
  MemoryDescriptor descriptor = {buffer, size, alignment};
  return MemoryCreate(&descriptor);
}

// Offsets in a 1000-byte buffer: the header takes 28 bytes, blocks go from 1000 downwards.
class MemoryArenaTest : public ::testing::Test {
 protected:
  void SetUp() override { arena_ = Create(buffer_, sizeof(buffer_), 4); }
  uint32_t Alloc(uint32_t size) {
    auto* block = static_cast<uint8_t*>(MemoryAlloc(arena_, size));
    return block ? static_cast<uint32_t>(block - buffer_) : 0;
  }
  void Free(uint32_t offset) { MemoryFree(arena_, buffer_ + offset); }
  uint32_t Hole() { return State(arena_).hole_bytes; }

  alignas(8) uint8_t buffer_[1000];
  MemoryHandle arena_ = 0;
};

TEST_F(MemoryArenaTest, BlocksGoFromTheTopDownAndGapsFillFromTheirHighEnd) {
  ASSERT_EQ(reinterpret_cast<uintptr_t>(buffer_), arena_);
  EXPECT_EQ(964u, MemoryDebugAvailable(arena_));
  EXPECT_EQ(900u, Alloc(100));
  EXPECT_EQ(800u, Alloc(100));
  EXPECT_EQ(0u, Alloc(0) + Alloc(0xFFFFFFFF));
  Free(900);
  EXPECT_EQ(100u, Hole());
  EXPECT_EQ(960u, Alloc(40));
  EXPECT_EQ(60u, Hole());
  EXPECT_EQ(920u, Alloc(40));
  EXPECT_EQ(700u, Alloc(100));  // the 20 bytes left don't fit
  Free(700);                    // the lowest block leaves no hole
  EXPECT_EQ(20u, Hole());
  EXPECT_EQ(4u, State(arena_).entry_count);
  EXPECT_EQ(760u, MemoryDebugAvailable(arena_));  // 940 behind four entries, 180 in use
  EXPECT_EQ(912u, Alloc(5));  // rounded to 8, into the gap left at 900
  MemoryReset(arena_);
  EXPECT_EQ(0u, State(arena_).entry_count);
  for (size_t i = 28; i < sizeof(buffer_); ++i) ASSERT_EQ(0xAA, buffer_[i]);
  EXPECT_EQ(36u, Alloc(964));  // all that is available, to the byte
}

// Dead entries are squeezed out when the table meets the blocks, and all at once past 2048.
TEST_F(MemoryArenaTest, SqueezeMakesRoomWhenTheTableMeetsTheBlocks) {
  int blocks = 0;
  while (Alloc(8)) ++blocks;
  ASSERT_EQ(60, blocks);
  Free(992);
  Free(984);
  EXPECT_EQ(992u, Alloc(8));
  EXPECT_EQ(2u, State(arena_).dead_entries);
  EXPECT_EQ(984u, Alloc(8));
  EXPECT_EQ(0u, State(arena_).dead_entries);

  std::vector<uint8_t> buffer(64 * 1024);
  MemoryHandle arena = Create(buffer.data(), buffer.size(), 4);
  std::vector<void*> many(4097);
  for (void*& block : many) block = MemoryAlloc(arena, 4);
  ASSERT_NE(nullptr, many.back());
  for (int i = 2048; i < 4096; ++i) MemoryFree(arena, many[i]);  // the longest run, from mid
  EXPECT_EQ(2048u, State(arena).dead_entries);
  MemoryFree(arena, many[0]);
  EXPECT_EQ(0u, State(arena).dead_entries);
  EXPECT_EQ(2048u, State(arena).entry_count);
}

TEST(MemoryArena, CreateChecksItsDescriptorAndANullArenaIsHarmless) {
  alignas(8) uint8_t buffer[64];
  EXPECT_EQ(0u, MemoryCreate(nullptr));
  EXPECT_EQ(0u, Create(nullptr, 64, 4) + Create(buffer, 0, 4) + Create(buffer, 64, 0) +
                    Create(buffer, 64, 9) + Create(buffer, 2 * 8 + 27, 8));
  MemoryHandle smallest = Create(buffer + 1, 2 * 8 + 28, 8);  // no room for one entry
  ASSERT_NE(0u, smallest);
  EXPECT_EQ(nullptr, MemoryAlloc(smallest, 1));
  EXPECT_EQ(nullptr, MemoryAlloc(0, 8));
  EXPECT_EQ(0u, MemoryDebugAvailable(0));
  MemoryFree(0, buffer);
  MemoryReset(0);
  for (uint8_t alignment : {1, 3, 8}) {  // any alignment from 1 to 8, at an odd address
    MemoryHandle odd = Create(buffer + 1, 63, alignment);
    const uint32_t empty = MemoryDebugAvailable(odd);
    auto* block = static_cast<uint8_t*>(MemoryAlloc(odd, 5));
    ASSERT_NE(nullptr, block);
    EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(block) % alignment);
    EXPECT_LE(block + 5, buffer + 64);
    MemoryFree(odd, block);
    EXPECT_EQ(empty, MemoryDebugAvailable(odd));
  }
}

// A null address, on either side of a copy, does nothing and is given back.
TEST(MemoryArena, SetAndCopyPassOverANullAddress) {
  uint8_t bytes[4] = {1, 2, 3, 4};
  EXPECT_EQ(bytes, MemorySet(bytes, 9, 2));
  EXPECT_EQ(bytes, MemoryCopy(bytes, bytes + 2, 2));
  EXPECT_EQ(bytes, MemoryCopy(bytes, nullptr, 4));
  EXPECT_EQ(nullptr, MemoryCopy(nullptr, bytes, 4));
  EXPECT_EQ(nullptr, MemorySet(nullptr, 0, 4));
  EXPECT_EQ(0, memcmp("\x03\x04\x03\x04", bytes, 4));
}

}  // namespace
