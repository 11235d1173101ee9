// VorQString: the runtime's terminated text, one byte an element, holding
// UTF-8 or ASCII as the caller knows. Lengths never count the terminator.
//
// A VorQString has fewer than kVorQStringLimit elements. Text at or beyond
// the limit isn't an error: every function that counts it sees length 0 and
// treats it as empty. Functions that go straight to the C library (the Cmp
// family and the Char copies) have no limit.
//
// Memory the library hands out comes through VorQMemAlloc with a handle:
// the plain functions use VorQStringMemHandle, the Ex forms take one as
// their last argument. Whatever a Clone, Allocate, To... or Join function
// returns belongs to the caller, who frees it with VorQStringDeallocate (or
// VorQStringExDeallocate with the same handle).
#ifndef RUNTIME_TEXT_VORQ_STRING_H_
#define RUNTIME_TEXT_VORQ_STRING_H_

#include <stdint.h>

#include "runtime/memory/memory_arena.h"

typedef char VorQString;

constexpr int kVorQStringLimit = 512000;

extern "C" {

// The handle of the plain functions; 0 (the process heap) until set. Set it
// once before the library is used: it has no lock.
extern MemoryHandle VorQStringMemHandle;
int VorQStringMemSet(MemoryHandle handle);

// Zero-filled blocks of `count` elements; null for 0 or no memory.
VorQString* VorQStringAllocate(uint32_t count);
char* VorQStringCharAllocate(uint32_t count);
VorQString* VorQStringExAllocate(uint32_t count, MemoryHandle handle);
char* VorQStringExCharAllocate(uint32_t count, MemoryHandle handle);

// 0, or -1 for a null pointer.
int VorQStringDeallocate(VorQString* text);
int VorQStringCharDeallocate(char* text);
int VorQStringExDeallocate(VorQString* text, MemoryHandle handle);
int VorQStringExCharDeallocate(char* text, MemoryHandle handle);

// Elements before the terminator; 0 for null, empty and too long text.
int VorQStringLen(const VorQString* text);
int VorQStringCharLen(const char* text);
int VorQStringExLen(const VorQString* text);
int VorQStringExCharLen(const char* text);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_H_
