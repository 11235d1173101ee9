// A fixed-buffer allocator: the arena's header and its block table live at
// the bottom of the caller's buffer, the blocks are placed from the top down.
// After MemoryCreate nothing here touches the process heap.
//
// The caller owns the buffer and frees it; an arena needs no destruction.
// Addresses from MemoryAlloc stay valid until MemoryFree, MemoryReset or the
// end of the buffer. An arena has no lock: callers that share one serialise.
#ifndef RUNTIME_MEMORY_MEMORY_ARENA_H_
#define RUNTIME_MEMORY_MEMORY_ARENA_H_

#include <stdint.h>

// The address of an arena's header. Handles were 32-bit values on the hosts
// this runtime came from; here a handle is wide enough for a pointer, and 0
// still means "no arena" (the process heap, where a handle picks one).
typedef uintptr_t MemoryHandle;

struct MemoryDescriptor {
  void* buffer;
  uint32_t size;
  uint8_t alignment;  // 1 to 8; needn't be a power of two.
};

// Header and entries are packed: an arena may be aligned to 3 or 5, and
// their fields are read wherever that puts them. The table is kept as an
// offset rather than a pointer so that the header stays 28 bytes with
// 64-bit pointers, and the layout (and every offset handed out) is the one
// of 32-bit hosts.
#pragma pack(push, 1)
struct MemoryBlockEntry {
  uint32_t offset;  // From the buffer's first byte; 0 marks a dead entry.
  uint32_t size;    // Rounded up to the alignment.
};

struct MemoryArena {
  uint8_t* buffer;  // Base of all offsets.
  uint32_t size;
  uint8_t alignment;
  uint8_t block_overhead;  // Bytes a block costs beyond its size; always 0.
  uint16_t table_offset;   // From the buffer to the first MemoryBlockEntry.
  uint32_t entry_count;    // Dead entries included.
  uint32_t hole_bytes;     // Free bytes above the lowest block; may overstate.
  uint32_t dead_entries;
};
#pragma pack(pop)

static_assert(sizeof(MemoryBlockEntry) == 8, "table entries are 8 bytes");
static_assert(sizeof(MemoryArena) == 28, "the arena header is 28 bytes");

extern "C" {

// Gives 0 for a null descriptor or buffer, a size of 0, an alignment outside
// 1..8, or a buffer smaller than twice the alignment plus the header.
MemoryHandle MemoryCreate(const MemoryDescriptor* descriptor);
void MemoryDestroy(MemoryHandle arena);

// Gives 0 for arena 0, size 0, or when no place is left.
void* MemoryAlloc(MemoryHandle arena, uint32_t size);
// Addresses the arena didn't hand out, or already freed, are ignored.
void MemoryFree(MemoryHandle arena, void* address);
// Forgets every block and fills the table and block space with 0xAA.
void MemoryReset(MemoryHandle arena);

// memset and memcpy; a null address does nothing and is given back.
void* MemorySet(void* address, int value, uint32_t count);
void* MemoryCopy(void* destination, const void* source, uint32_t count);

// Free bytes, gaps included, as they'd be with the dead entries squeezed out.
uint32_t MemoryDebugAvailable(MemoryHandle arena);
void MemoryDebugValidate(MemoryHandle arena);

}  // extern "C"

#endif  // RUNTIME_MEMORY_MEMORY_ARENA_H_
