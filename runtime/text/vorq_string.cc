#include "runtime/text/vorq_string.h"

#include "runtime/memory/vorq_mem.h"
#include "runtime/text/text_helpers.h"

MemoryHandle VorQStringMemHandle = 0;

int VorQStringMemSet(MemoryHandle handle) {
  VorQStringMemHandle = handle;
  return 0;
}

VorQString* VorQStringExAllocate(uint32_t count, MemoryHandle handle) {
  return static_cast<VorQString*>(VorQMemAlloc(count, handle));
}

VorQString* VorQStringAllocate(uint32_t count) {
  return VorQStringExAllocate(count, VorQStringMemHandle);
}

char* VorQStringCharAllocate(uint32_t count) {
  return VorQStringExAllocate(count, VorQStringMemHandle);
}

char* VorQStringExCharAllocate(uint32_t count, MemoryHandle handle) {
  return VorQStringExAllocate(count, handle);
}

int VorQStringExDeallocate(VorQString* text, MemoryHandle handle) {
  if (!text)
    return -1;
  return VorQMemFree(text, handle) == 0 ? 0 : -1;
}

int VorQStringDeallocate(VorQString* text) {
  return VorQStringExDeallocate(text, VorQStringMemHandle);
}

int VorQStringCharDeallocate(char* text) {
  return VorQStringExDeallocate(text, VorQStringMemHandle);
}

int VorQStringExCharDeallocate(char* text, MemoryHandle handle) {
  return VorQStringExDeallocate(text, handle);
}

int VorQStringLen(const VorQString* text) {
  return BoundedLength(text);
}

int VorQStringCharLen(const char* text) {
  return BoundedLength(text);
}

int VorQStringExLen(const VorQString* text) {
  return BoundedLength(text);
}

int VorQStringExCharLen(const char* text) {
  return BoundedLength(text);
}
