#include "runtime/memory/vorq_mem.h"

#include <stdlib.h>
#include <string.h>

namespace {
constexpr uint8_t kDoorAlignment = 4;
}  // namespace

MemoryHandle VorQMemInit(uint32_t size) {
  if (size == 0)
    return 0;
  void* buffer = calloc(1, size);
  if (!buffer)
    return 0;
  MemoryDescriptor descriptor = {buffer, size, kDoorAlignment};
  MemoryHandle handle = MemoryCreate(&descriptor);
  if (!handle)
    free(buffer);
  return handle;
}

int VorQMemDeInit(MemoryHandle handle) {
  if (!handle)
    return -2;
  MemoryDestroy(handle);
  // malloc aligns beyond 4, so the header sits at the buffer's start and the
  // handle is the address calloc gave.
  free(reinterpret_cast<void*>(handle));
  return 0;
}

void* VorQMemAlloc(uint32_t size, MemoryHandle handle) {
  if (size == 0)
    return nullptr;
  void* block = handle ? MemoryAlloc(handle, size) : malloc(size);
  if (!block)
    return nullptr;
  return memset(block, 0, size);
}

int VorQMemFree(void* address, MemoryHandle handle) {
  if (!address)
    return -2;
  if (handle) {
    MemoryFree(handle, address);
  } else {
    free(address);
  }
  return 0;
}
