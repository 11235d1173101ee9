#include "runtime/memory/memory_arena.h"

#include <stdint.h>
#include <string.h>

#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

const MemoryArena& State(MemoryHandle handle) {
  return *reinterpret_cast<const MemoryArena*>(handle);
}

uint32_t OffsetOf(MemoryHandle handle, const void* block) {
  return static_cast<uint32_t>(static_cast<const uint8_t*>(block) -
                               State(handle).buffer);
}

MemoryHandle Create(void* buffer, uint32_t size, uint8_t alignment) {
  MemoryDescriptor descriptor = {buffer, size, alignment};
  return MemoryCreate(&descriptor);
}

// A 1000-byte buffer aligned to 4, the arena aligned to 4.
class MemoryArenaTest : public ::testing::Test {
 protected:
  void SetUp() override { arena_ = Create(buffer_, sizeof(buffer_), 4); }
  uint32_t Alloc(uint32_t size) {
    void* block = MemoryAlloc(arena_, size);
    return block ? OffsetOf(arena_, block) : 0;
  }
  void Free(uint32_t offset) { MemoryFree(arena_, buffer_ + offset); }

  alignas(8) uint8_t buffer_[1000];
  MemoryHandle arena_ = 0;
};

TEST_F(MemoryArenaTest, HeaderAndTableLieAtTheBottom) {
  ASSERT_EQ(reinterpret_cast<uintptr_t>(buffer_), arena_);
  EXPECT_EQ(28, State(arena_).table_offset);
  EXPECT_EQ(964u, MemoryDebugAvailable(arena_));
}

TEST_F(MemoryArenaTest, BlocksGoFromTheTopDown) {
  EXPECT_EQ(900u, Alloc(100));
  EXPECT_EQ(800u, Alloc(100));
  EXPECT_EQ(748u, MemoryDebugAvailable(arena_));
  EXPECT_EQ(792u, Alloc(5));  // Rounded to 8.
  EXPECT_EQ(0u, Alloc(0));
}

TEST_F(MemoryArenaTest, FreedGapIsFilledFromItsHighEnd) {
  Alloc(100);
  Alloc(100);
  Free(900);
  EXPECT_EQ(100u, State(arena_).hole_bytes);
  EXPECT_EQ(960u, Alloc(40));
  EXPECT_EQ(60u, State(arena_).hole_bytes);
  EXPECT_EQ(920u, Alloc(40));
  EXPECT_EQ(700u, Alloc(100));  // The 20 bytes left don't fit.
}

TEST_F(MemoryArenaTest, FreeingTheLowestBlockLeavesNoHole) {
  Alloc(100);
  Alloc(100);
  Free(800);
  EXPECT_EQ(0u, State(arena_).hole_bytes);
  EXPECT_EQ(1u, State(arena_).entry_count);
  EXPECT_EQ(880u, Alloc(20));
}

TEST_F(MemoryArenaTest, FreeingTwiceOrForeignAddressesChangesNothing) {
  Alloc(100);
  Alloc(100);
  Alloc(100);
  Free(800);
  std::vector<uint8_t> before(buffer_, buffer_ + 64);
  Free(800);
  Free(804);
  Free(0);
  MemoryFree(arena_, nullptr);
  uint8_t elsewhere;
  MemoryFree(arena_, &elsewhere);
  EXPECT_EQ(before, std::vector<uint8_t>(buffer_, buffer_ + 64));
}

TEST_F(MemoryArenaTest, SizesBeyondTheBufferFail) {
  EXPECT_EQ(0u, Alloc(0xFFFFFFFF));
  EXPECT_EQ(0u, Alloc(965));
  EXPECT_EQ(36u, Alloc(964));
  EXPECT_EQ(0u, Alloc(1));
}

TEST_F(MemoryArenaTest, SqueezeMakesRoomWhenTheTableMeetsTheBlocks) {
  std::vector<uint32_t> offsets;
  for (uint32_t offset; (offset = Alloc(8)) != 0;)
    offsets.push_back(offset);
  ASSERT_EQ(60u, offsets.size());
  Free(992);
  Free(984);
  EXPECT_EQ(992u, Alloc(8));
  EXPECT_EQ(2u, State(arena_).dead_entries);
  // The dead entries now stand between the table and the lowest block.
  EXPECT_EQ(984u, Alloc(8));
  EXPECT_EQ(0u, State(arena_).dead_entries);
  EXPECT_EQ(0u, Alloc(8));
}

TEST_F(MemoryArenaTest, ResetForgetsBlocksAndPoisons) {
  Alloc(100);
  Free(900);
  MemoryReset(arena_);
  EXPECT_EQ(0u, State(arena_).entry_count);
  EXPECT_EQ(0u, State(arena_).hole_bytes);
  EXPECT_EQ(0u, State(arena_).dead_entries);
  for (size_t i = 28; i < sizeof(buffer_); ++i)
    ASSERT_EQ(0xAA, buffer_[i]);
  EXPECT_EQ(900u, Alloc(100));
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
}

TEST(MemoryArena, NullArenaIsHarmless) {
  EXPECT_EQ(nullptr, MemoryAlloc(0, 8));
  EXPECT_EQ(0u, MemoryDebugAvailable(0));
  MemoryFree(0, nullptr);
  MemoryReset(0);
  MemoryDestroy(0);
  MemoryDebugValidate(0);
  EXPECT_EQ(nullptr, MemorySet(nullptr, 0, 4));
  EXPECT_EQ(nullptr, MemoryCopy(nullptr, "x", 1));
}

TEST(MemoryArena, OddAlignmentAndUnalignedBuffer) {
  uint8_t storage[303];
  uint8_t* buffer = storage;
  while (reinterpret_cast<uintptr_t>(buffer) % 3 == 0)
    ++buffer;
  MemoryHandle arena = Create(buffer, 300, 3);
  ASSERT_NE(0u, arena);
  EXPECT_EQ(0u, arena % 3);
  EXPECT_GT(arena, reinterpret_cast<uintptr_t>(buffer));
  uint8_t* base = State(arena).buffer;  // Packed: read, don't bind.
  EXPECT_EQ(buffer, base);
  for (uint32_t size : {1u, 2u, 3u, 4u, 7u}) {
    void* block = MemoryAlloc(arena, size);
    ASSERT_NE(nullptr, block);
    EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(block) % 3);
  }
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
  EXPECT_EQ(2100u, State(arena).entry_count);
  MemoryFree(arena, blocks[2048]);
  EXPECT_EQ(0u, State(arena).dead_entries);
  EXPECT_EQ(51u, State(arena).entry_count);
  // Every survivor can still be found and freed.
  for (int i = 2049; i < 2100; ++i)
    MemoryFree(arena, blocks[i]);
  EXPECT_EQ(0u, State(arena).entry_count);
}

// Random allocations and frees against a model of the live blocks.
class ArenaModel {
 public:
  ArenaModel(uint8_t* buffer, uint32_t size, uint8_t alignment)
      : buffer_(buffer), size_(size), alignment_(alignment) {
    arena_ = Create(buffer, size, alignment);
  }

  void Alloc(uint32_t size, uint8_t fill) {
    uint8_t* block = static_cast<uint8_t*>(MemoryAlloc(arena_, size));
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
    live_.erase(it);
  }

  void FreeUnknown(uint32_t offset) {
    if (live_.count(buffer_ + offset) == 0)
      MemoryFree(arena_, buffer_ + offset);
  }

  void Check() const {
    // The header may be misaligned: read its fields into locals.
    const MemoryArena& state = State(arena_);
    const uint32_t table_offset = state.table_offset;
    const uint32_t count = state.entry_count;
    const uint32_t dead = state.dead_entries;
    const uint32_t hole_bytes = state.hole_bytes;
    const auto* table =
        reinterpret_cast<const MemoryBlockEntry*>(buffer_ + table_offset);
    ASSERT_LE(dead, 2048u);
    ASSERT_EQ(live_.size(), count - dead);
    std::vector<uint32_t> offsets;
    for (uint32_t i = 0; i < count; ++i)
      offsets.push_back(uint32_t{table[i].offset});
    if (count) {
      ASSERT_NE(0u, offsets.back());
    }
    const uint8_t* table_end = buffer_ + table_offset + 8 * count;
    const uint8_t* previous_end = table_end;
    uint64_t used = 0;
    for (const auto& [block, info] : live_) {
      ASSERT_GE(block, previous_end);
      for (uint32_t i = 0; i < info.size; ++i)
        ASSERT_EQ(info.fill, block[i]);
      uint32_t rounded = (info.size + alignment_ - 1) / alignment_ * alignment_;
      previous_end = block + rounded;
      used += rounded;
    }
    ASSERT_LE(previous_end, buffer_ + size_);
    // Hole bytes may overstate the free bytes above the lowest block, never
    // understate them: a gap it forgets would never be used again.
    if (!live_.empty()) {
      uintptr_t end = reinterpret_cast<uintptr_t>(buffer_ + size_);
      const uint8_t* top = buffer_ + size_ - end % alignment_;
      ASSERT_GE(hole_bytes, top - live_.begin()->first - used);
    }
    uint32_t previous = UINT32_MAX;
    for (uint32_t offset : offsets) {
      if (offset == 0)
        continue;
      ASSERT_LT(offset, previous);
      previous = offset;
    }
    uintptr_t squeezed = reinterpret_cast<uintptr_t>(buffer_) + table_offset +
                         8 * (live_.size() + 1);
    squeezed = (squeezed + alignment_ - 1) / alignment_ * alignment_;
    uint64_t room = size_ - (squeezed - reinterpret_cast<uintptr_t>(buffer_));
    ASSERT_EQ(room / alignment_ * alignment_ - used,
              MemoryDebugAvailable(arena_));
  }

 private:
  struct Block {
    uint32_t size;
    uint8_t fill;
  };
  uint8_t* buffer_;
  uint32_t size_;
  uint8_t alignment_;
  MemoryHandle arena_ = 0;
  std::map<uint8_t*, Block> live_;
};

TEST(MemoryArena, RandomUseKeepsBlocksApartAndIntact) {
  std::mt19937 random(20240611);
  for (uint8_t alignment : {1, 3, 4, 8}) {
    SCOPED_TRACE(alignment);
    std::vector<uint8_t> storage(16 * 1024 + 8);
    uint8_t* buffer = storage.data() + random() % 8;
    ArenaModel model(buffer, 16 * 1024, alignment);
    for (int step = 0; step < 6000; ++step) {
      // Phases of mostly allocating and mostly freeing.
      bool filling = step / 500 % 2 == 0;
      uint32_t roll = random() % 100;
      if (roll < (filling ? 75u : 30u)) {
        uint32_t size =
            roll % 10 == 0 ? 1 + random() % 2000 : 1 + random() % 48;
        model.Alloc(size, static_cast<uint8_t>(step));
      } else if (roll < 97) {
        model.Free(random());
      } else {
        model.FreeUnknown(1 + random() % (16 * 1024 - 1));
      }
      ASSERT_NO_FATAL_FAILURE(model.Check()) << "step " << step;
    }
  }
}

}  // namespace
