// New texts: clones, substrings and joins. Each result is terminated and
// belongs to the caller, who frees it through the Deallocate function of the
// handle it came from. Every function gives null when memory runs out.
#ifndef RUNTIME_TEXT_VORQ_STRING_CLONE_H_
#define RUNTIME_TEXT_VORQ_STRING_CLONE_H_

#include "runtime/text/vorq_string.h"

extern "C" {

// A copy; null, empty and too long text give a new empty text.
VorQString* VorQCloneString(const VorQString* text);
VorQString* VorQStringExClone(const VorQString* text, MemoryHandle handle);

// A copy; null gives null, empty and too long text a new empty text.
char* VorQStringToChar(const VorQString* text);
unsigned char* VorQStringToUnsignedChar(const VorQString* text);
char* VorQStringExToChar(const VorQString* text, MemoryHandle handle);
unsigned char* VorQStringExToUnsignedChar(const VorQString* text,
                                          MemoryHandle handle);

// A copy; null gives a new empty text, empty and too long text give null.
VorQString* VorQStringCharStringToVorQString(const char* text);
VorQString* VorQStringExCharStringToVorQString(const char* text,
                                               MemoryHandle handle);

// `count` elements from `start`. Null when the text is null, empty or too
// long, when `start` or `count` is negative, or when they pass its end.
VorQString* VorQCloneSubstring(const VorQString* text, int start, int count);
VorQString* VorQStringExCloneSubstring(const VorQString* text,
                                       int start,
                                       int count,
                                       MemoryHandle handle);

// Stores `a` followed by `b` in a new text at *out: 0, -1 when memory runs
// out, -2 for a null pointer. A too long part counts as empty.
int VorQStringJoin(VorQString** out, const VorQString* a, const VorQString* b);
int VorQStringExJoin(VorQString** out,
                     const VorQString* a,
                     const VorQString* b,
                     MemoryHandle handle);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_CLONE_H_
