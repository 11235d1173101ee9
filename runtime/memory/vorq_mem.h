// The door to memory for the runtime: with a handle, blocks come from that
// arena; with handle 0, from the process heap.
//
// VorQMemInit takes a zero-filled heap buffer and makes an arena in it;
// VorQMemDeInit frees that buffer, and with it every block still in use.
#ifndef RUNTIME_MEMORY_VORQ_MEM_H_
#define RUNTIME_MEMORY_VORQ_MEM_H_

#include <stdint.h>

#include "runtime/memory/memory_arena.h"

extern "C" {

// An arena of `size` bytes aligned to 4, or 0 for size 0 or no memory.
MemoryHandle VorQMemInit(uint32_t size);
// 0, or -2 for handle 0.
int VorQMemDeInit(MemoryHandle handle);

// `size` zero bytes from the arena or the heap; null for size 0 or no memory.
void* VorQMemAlloc(uint32_t size, MemoryHandle handle);
// 0, or -2 for a null address. Addresses the arena doesn't hold are ignored.
int VorQMemFree(void* address, MemoryHandle handle);

}  // extern "C"

#endif  // RUNTIME_MEMORY_VORQ_MEM_H_
