#include "runtime/memory/memory_arena.h"

#include <stdint.h>
#include <string.h>

#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

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

// The cases are offsets in a 1000-byte buffer aligned to 4, arena aligned
// to 4: the header takes 28 bytes, and blocks start from 1000 downwards.
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
  EXPECT_EQ(28, State(arena_).table_offset);
  EXPECT_EQ(964u, MemoryDebugAvailable(arena_));
  EXPECT_EQ(900u, Alloc(100));
  EXPECT_EQ(800u, Alloc(100));
  EXPECT_EQ(748u, MemoryDebugAvailable(arena_));
  EXPECT_EQ(0u, Alloc(0) + Alloc(0xFFFFFFFF));
  Free(900);
  EXPECT_EQ(100u, Hole());
  EXPECT_EQ(960u, Alloc(40));
  EXPECT_EQ(60u, Hole());
  EXPECT_EQ(920u, Alloc(40));
  EXPECT_EQ(700u, Alloc(100));  // The 20 bytes left don't fit.
  Free(700);  // The lowest block leaves no hole.
  EXPECT_EQ(20u, Hole());
  EXPECT_EQ(4u, State(arena_).entry_count);
  EXPECT_EQ(912u, Alloc(5));  // Rounded to 8, into the gap left at 900.
  MemoryReset(arena_);
  EXPECT_EQ(0u, State(arena_).entry_count);
  for (size_t i = 28; i < sizeof(buffer_); ++i) ASSERT_EQ(0xAA, buffer_[i]);
  EXPECT_EQ(900u, Alloc(100));
}

TEST_F(MemoryArenaTest, SqueezeMakesRoomWhenTheTableMeetsTheBlocks) {
  int blocks = 0;
  while (Alloc(8)) ++blocks;
  ASSERT_EQ(60, blocks);
  Free(992);
  Free(984);
  EXPECT_EQ(992u, Alloc(8));
  EXPECT_EQ(2u, State(arena_).dead_entries);
  // The dead entries now stand between the table and the lowest block.
  EXPECT_EQ(984u, Alloc(8));
  EXPECT_EQ(0u, State(arena_).dead_entries);
}

TEST(MemoryArena, CreateChecksItsDescriptor) {
  alignas(8) uint8_t buffer[64];
  EXPECT_EQ(0u, MemoryCreate(nullptr));
  EXPECT_EQ(0u, Create(nullptr, 64, 4));
  EXPECT_EQ(0u, Create(buffer, 0, 4));
  EXPECT_EQ(0u, Create(buffer, 64, 0));
  EXPECT_EQ(0u, Create(buffer, 64, 9));
  EXPECT_EQ(0u, Create(buffer, 2 * 8 + 27, 8));
  MemoryHandle smallest = Create(buffer, 2 * 8 + 28, 8);
  ASSERT_NE(0u, smallest);
  EXPECT_EQ(nullptr, MemoryAlloc(smallest, 1));
  // A null arena is harmless everywhere.
  EXPECT_EQ(nullptr, MemoryAlloc(0, 8));
  EXPECT_EQ(0u, MemoryDebugAvailable(0));
  MemoryFree(0, buffer);
  MemoryReset(0);
}

TEST(MemoryArena, ManyDeadEntriesAreSqueezedAtOnce) {
  std::vector<uint8_t> buffer(64 * 1024);
  MemoryHandle arena = Create(buffer.data(), buffer.size(), 4);
  std::vector<void*> blocks;
  for (int i = 0; i < 2100; ++i)
    blocks.push_back(MemoryAlloc(arena, 4));
  ASSERT_NE(nullptr, blocks.back());
  for (int i = 0; i < 2048; ++i)
    MemoryFree(arena, blocks[i]);
  EXPECT_EQ(2048u, State(arena).dead_entries);
  MemoryFree(arena, blocks[2048]);
  EXPECT_EQ(0u, State(arena).dead_entries);
  EXPECT_EQ(51u, State(arena).entry_count);
  for (int i = 2049; i < 2100; ++i)
    MemoryFree(arena, blocks[i]);
  EXPECT_EQ(0u, State(arena).entry_count);
}

// Random allocations and frees against a model of the live blocks, with
// buffers at any address and every kind of alignment.
class ArenaModel {
 public:
  ArenaModel(uint8_t* buffer, uint32_t size, uint8_t alignment)
      : buffer_(buffer), size_(size), alignment_(alignment) {
    arena_ = Create(buffer, size, alignment);
  }

  void Alloc(uint32_t size, uint8_t fill) {
    auto* block = static_cast<uint8_t*>(MemoryAlloc(arena_, size));
    if (!block)
      return;
    ASSERT_EQ(0u, reinterpret_cast<uintptr_t>(block) % alignment_);
    memset(block, fill, size);
    ASSERT_TRUE(live_.emplace(block, Block{size, fill}).second);
  }

  void Free(size_t pick) {
    if (live_.empty())
      return;
    auto it = std::next(live_.begin(), pick % live_.size());
    MemoryFree(arena_, it->first);
    if (pick % 4 == 0)
      MemoryFree(arena_, it->first);  // A second free changes nothing.
    live_.erase(it);
  }

  void FreeUnknown(uint32_t offset) {
    if (!live_.count(buffer_ + offset))
      MemoryFree(arena_, buffer_ + offset);
  }

  void Check() const {
    const MemoryArena state = State(arena_);
    const auto* first =
        reinterpret_cast<const MemoryBlockEntry*>(buffer_ + state.table_offset);
    const std::vector<MemoryBlockEntry> table(first, first + state.entry_count);
    ASSERT_LE(state.dead_entries, 2048u);
    ASSERT_EQ(live_.size(), state.entry_count - state.dead_entries);
    uint32_t previous = UINT32_MAX;  // Live entries descend; the last lives.
    for (const MemoryBlockEntry& entry : table) {
      if (entry.offset == 0)
        continue;
      ASSERT_LT(entry.offset, previous);
      previous = entry.offset;
    }
    ASSERT_TRUE(table.empty() || table.back().offset != 0);

    const uint8_t* end = buffer_ + state.table_offset + 8 * table.size();
    uint64_t used = 0;
    for (const auto& [block, info] : live_) {
      ASSERT_GE(block, end);
      for (uint32_t i = 0; i < info.size; ++i)
        ASSERT_EQ(info.fill, block[i]);
      uint32_t rounded = RoundUp(info.size);
      end = block + rounded;
      used += rounded;
    }
    ASSERT_LE(end, buffer_ + size_);
    // Hole bytes may overstate the free bytes above the lowest block, never
    // understate them: a gap it forgets would never be used again.
    const uintptr_t base = reinterpret_cast<uintptr_t>(buffer_);
    const uint64_t top = size_ - (base + size_) % alignment_;
    if (!live_.empty()) {
      uint64_t lowest = live_.begin()->first - buffer_;
      ASSERT_GE(state.hole_bytes, top - lowest - used);
    }
    uint64_t low =
        RoundUp(base + state.table_offset + 8 * (live_.size() + 1)) - base;
    ASSERT_EQ((size_ - low) / alignment_ * alignment_ - used,
              MemoryDebugAvailable(arena_));
  }

 private:
  struct Block {
    uint32_t size;
    uint8_t fill;
  };
  uint64_t RoundUp(uint64_t value) const {
    return (value + alignment_ - 1) / alignment_ * alignment_;
  }

  uint8_t* buffer_;
  uint32_t size_;
  uint8_t alignment_;
  MemoryHandle arena_ = 0;
  std::map<uint8_t*, Block> live_;
};

TEST(MemoryArena, RandomUseKeepsBlocksApartAndIntact) {
  constexpr uint32_t kSize = 16 * 1024;
  std::mt19937 random(20240611);
  for (uint8_t alignment : {1, 3, 4, 8}) {
    SCOPED_TRACE(alignment);
    std::vector<uint8_t> storage(kSize + 8);
    ArenaModel model(storage.data() + random() % 8, kSize, alignment);
    for (int step = 0; step < 6000; ++step) {
      bool filling = step / 500 % 2 == 0;  // Phases of growth and shrinking.
      uint32_t roll = random() % 100;
      if (roll < (filling ? 75u : 30u)) {
        uint32_t limit = roll % 10 ? 48 : 2000;
        model.Alloc(1 + random() % limit, static_cast<uint8_t>(step));
      } else if (roll < 97) {
        model.Free(random());
      } else {
        model.FreeUnknown(1 + random() % (kSize - 1));
      }
      ASSERT_NO_FATAL_FAILURE(model.Check()) << "step " << step;
    }
  }
}

}  // namespace
