#include "runtime/memory/memory_arena.h"

#include <string.h>

namespace {

// A free entry scans at most this many entries, and one more, for a live
// one; squeezing at this many dead entries keeps every run of them shorter.
constexpr uint32_t kDeadScanLimit = 2049;
constexpr uint32_t kHeaderSize = sizeof(MemoryArena);
constexpr uint8_t kPoison = 0xAA;

MemoryArena* ArenaOf(MemoryHandle handle) {
  return reinterpret_cast<MemoryArena*>(handle);
}

uintptr_t RoundUp(uintptr_t value, uint32_t alignment) {
  return (value + alignment - 1) / alignment * alignment;
}

uint64_t RoundDown(uint64_t value, uint32_t alignment) {
  return value / alignment * alignment;
}

MemoryBlockEntry* Table(MemoryArena* arena) {
  return reinterpret_cast<MemoryBlockEntry*>(arena->buffer +
                                             arena->table_offset);
}

// Offset of the first aligned address behind a table of `entries` entries.
uint64_t TableEnd(const MemoryArena* arena, uint64_t entries) {
  uintptr_t base = reinterpret_cast<uintptr_t>(arena->buffer);
  uintptr_t end =
      base + arena->table_offset + entries * sizeof(MemoryBlockEntry);
  return RoundUp(end, arena->alignment) - base;
}

bool IsDead(const MemoryBlockEntry& entry) {
  return entry.offset == 0;
}

// Moves the live entries down over the dead ones, keeping their order.
void Squeeze(MemoryArena* arena) {
  MemoryBlockEntry* table = Table(arena);
  uint32_t kept = 0;
  for (uint32_t i = 0; i < arena->entry_count; ++i) {
    if (!IsDead(table[i]))
      table[kept++] = table[i];
  }
  arena->entry_count = kept;
  arena->dead_entries = 0;
}

// Finds an offset for `size` bytes (already rounded), or gives false.
bool FindPlace(MemoryArena* arena, uint64_t size, uint64_t* place) {
  const MemoryBlockEntry* table = Table(arena);
  const uint32_t count = arena->entry_count;
  uint64_t low = TableEnd(arena, uint64_t{count} + 1);
  if (low >= arena->size)
    return false;
  uint64_t top = low + RoundDown(arena->size - low, arena->alignment);
  uint64_t need = arena->block_overhead + size;
  uint64_t lowest = count ? table[count - 1].offset : top;
  if (count && low > lowest)
    return false;  // The table would meet the blocks.

  if (arena->hole_bytes >= need) {
    // First fit from the top: a block goes to the high end of its gap.
    for (uint32_t i = 0; i < count; ++i) {
      if (IsDead(table[i]))
        continue;
      uint64_t gap_start =
          uint64_t{table[i].offset} + table[i].size + arena->block_overhead;
      if (top >= gap_start && top - gap_start >= need) {
        *place = top - need;
        return true;
      }
      top = table[i].offset;
    }
    lowest = top;
  }
  if (low > lowest || lowest - low < need)
    return false;
  *place = lowest - need;
  return true;
}

// Outcome of a search of the table for an offset, see Search().
enum class Found { kSlot, kHit, kBroken };

// Binary search over the entries, which stand in descending order of offset
// with dead ones among them. On kSlot, *index is where `offset` belongs; on
// kHit it is the entry holding it. kBroken means a run of dead entries longer
// than the squeeze allows, which the invariants rule out.
Found Search(MemoryArena* arena, uint64_t offset, uint32_t* index) {
  const MemoryBlockEntry* table = Table(arena);
  const uint32_t count = arena->entry_count;
  uint32_t lo = 0;
  uint32_t hi = count;
  uint32_t mid = hi / 2;
  while (hi != mid) {
    uint32_t i = mid;
    uint32_t scan_end = mid + kDeadScanLimit + 1;
    while (i < count && i < scan_end && IsDead(table[i]))
      ++i;
    if (i == count || i == scan_end)
      return Found::kBroken;
    if (offset == table[i].offset) {
      *index = i;
      return Found::kHit;
    }
    if (offset < table[i].offset) {
      lo = i + 1;
    } else {
      hi = hi > i ? i : hi - 1;
    }
    mid = (lo + hi) / 2;
  }
  *index = hi;
  return Found::kSlot;
}

void RemoveDeadTail(MemoryArena* arena) {
  const MemoryBlockEntry* table = Table(arena);
  while (arena->entry_count && IsDead(table[arena->entry_count - 1])) {
    --arena->entry_count;
    --arena->dead_entries;
  }
}

// Keeps hole bytes in step with the freeing of table[index].
void ForgetHole(MemoryArena* arena, uint32_t index) {
  const MemoryBlockEntry* table = Table(arena);
  const MemoryBlockEntry& entry = table[index];
  if (index + 1 < arena->entry_count) {
    arena->hole_bytes += arena->block_overhead + entry.size;
    return;
  }
  uint32_t above = index;
  while (above > 0 && IsDead(table[above - 1]))
    --above;
  if (above == 0) {
    arena->hole_bytes = 0;
    return;
  }
  // The gap above the lowest block joins the free space below all blocks.
  uint64_t gap = table[above - 1].offset -
                 (uint64_t{entry.offset} + entry.size + arena->block_overhead);
  arena->hole_bytes = arena->hole_bytes > gap ? arena->hole_bytes - gap : 0;
}

}  // namespace

MemoryHandle MemoryCreate(const MemoryDescriptor* descriptor) {
  if (!descriptor || !descriptor->buffer || descriptor->size == 0)
    return 0;
  const uint32_t alignment = descriptor->alignment;
  if (alignment == 0 || alignment > 8)
    return 0;
  if (descriptor->size < 2 * alignment + kHeaderSize)
    return 0;

  uintptr_t base = reinterpret_cast<uintptr_t>(descriptor->buffer);
  uintptr_t header = RoundUp(base, alignment);
  MemoryArena* arena = reinterpret_cast<MemoryArena*>(header);
  arena->buffer = static_cast<uint8_t*>(descriptor->buffer);
  arena->size = descriptor->size;
  arena->alignment = descriptor->alignment;
  arena->block_overhead = 0;
  arena->table_offset =
      static_cast<uint16_t>(RoundUp(header + kHeaderSize, alignment) - base);
  arena->entry_count = 0;
  arena->hole_bytes = 0;
  arena->dead_entries = 0;
  return header;
}

void MemoryDestroy(MemoryHandle) {}

void* MemoryAlloc(MemoryHandle handle, uint32_t size) {
  MemoryArena* arena = ArenaOf(handle);
  if (!arena || size == 0)
    return nullptr;
  uint64_t rounded = RoundUp(size, arena->alignment);
  if (rounded > arena->size)
    return nullptr;

  uint64_t place = 0;
  if (!FindPlace(arena, rounded, &place)) {
    Squeeze(arena);
    if (!FindPlace(arena, rounded, &place))
      return nullptr;
  }

  MemoryBlockEntry* table = Table(arena);
  uint32_t index = arena->entry_count;
  bool below_all = index && place < table[index - 1].offset;
  if (!below_all) {
    if (Search(arena, place, &index) != Found::kSlot)
      return nullptr;
    if (index != arena->entry_count)
      arena->hole_bytes -=
          static_cast<uint32_t>(arena->block_overhead + rounded);
  }
  memmove(&table[index + 1], &table[index],
          (arena->entry_count - index) * sizeof(MemoryBlockEntry));
  table[index].offset = static_cast<uint32_t>(place);
  table[index].size = static_cast<uint32_t>(rounded);
  ++arena->entry_count;
  return arena->buffer + place;
}

void MemoryFree(MemoryHandle handle, void* address) {
  MemoryArena* arena = ArenaOf(handle);
  if (!arena || !address || arena->entry_count == 0)
    return;
  uintptr_t base = reinterpret_cast<uintptr_t>(arena->buffer);
  uintptr_t target = reinterpret_cast<uintptr_t>(address);
  if (target <= base || target - base >= arena->size)
    return;

  uint32_t index = 0;
  if (Search(arena, target - base, &index) != Found::kHit)
    return;
  ForgetHole(arena, index);
  Table(arena)[index].offset = 0;
  ++arena->dead_entries;
  RemoveDeadTail(arena);
  if (arena->dead_entries >= kDeadScanLimit)
    Squeeze(arena);
}

void MemoryReset(MemoryHandle handle) {
  MemoryArena* arena = ArenaOf(handle);
  if (!arena)
    return;
  arena->entry_count = 0;
  arena->hole_bytes = 0;
  arena->dead_entries = 0;
  memset(arena->buffer + arena->table_offset, kPoison,
         arena->size - arena->table_offset);
}

void* MemorySet(void* address, int value, uint32_t count) {
  if (!address)
    return address;
  return memset(address, value, count);
}

void* MemoryCopy(void* destination, const void* source, uint32_t count) {
  if (!destination || !source)
    return destination;
  return memcpy(destination, source, count);
}

uint32_t MemoryDebugAvailable(MemoryHandle handle) {
  MemoryArena* arena = ArenaOf(handle);
  if (!arena)
    return 0;
  uint32_t live = arena->entry_count - arena->dead_entries;
  uint64_t low = TableEnd(arena, uint64_t{live} + 1);
  if (low >= arena->size)
    return 0;
  uint64_t free_bytes = RoundDown(arena->size - low, arena->alignment);
  const MemoryBlockEntry* table = Table(arena);
  for (uint32_t i = 0; i < arena->entry_count; ++i) {
    if (IsDead(table[i]))
      continue;
    uint64_t used = uint64_t{arena->block_overhead} + table[i].size;
    free_bytes = free_bytes > used ? free_bytes - used : 0;
  }
  return static_cast<uint32_t>(free_bytes);
}

// The table is kept consistent by every operation; there is nothing further
// to check at run time.
void MemoryDebugValidate(MemoryHandle) {}
