#include "runtime/text/vorq_string_clone.h"

#include "runtime/text/text_helpers.h"

namespace {

// A new text holding `length` elements of `text`; null when memory runs out.
VorQString* CloneLength(const char* text, int length, MemoryHandle handle) {
  VorQString* clone = VorQStringExAllocate(length + 1, handle);
  if (clone)
    CopyTerminated(clone, text, length);
  return clone;
}

}  // namespace

VorQString* VorQStringExClone(const VorQString* text, MemoryHandle handle) {
  return CloneLength(text, VorQStringLen(text), handle);
}

VorQString* VorQCloneString(const VorQString* text) {
  return VorQStringExClone(text, VorQStringMemHandle);
}

char* VorQStringExToChar(const VorQString* text, MemoryHandle handle) {
  if (!text)
    return nullptr;
  return CloneLength(text, VorQStringLen(text), handle);
}

char* VorQStringToChar(const VorQString* text) {
  return VorQStringExToChar(text, VorQStringMemHandle);
}

unsigned char* VorQStringExToUnsignedChar(const VorQString* text,
                                          MemoryHandle handle) {
  return reinterpret_cast<unsigned char*>(VorQStringExToChar(text, handle));
}

unsigned char* VorQStringToUnsignedChar(const VorQString* text) {
  return VorQStringExToUnsignedChar(text, VorQStringMemHandle);
}

VorQString* VorQStringExCharStringToVorQString(const char* text,
                                               MemoryHandle handle) {
  int length = VorQStringLen(text);
  if (text && length == 0)
    return nullptr;
  return CloneLength(text, length, handle);
}

VorQString* VorQStringCharStringToVorQString(const char* text) {
  return VorQStringExCharStringToVorQString(text, VorQStringMemHandle);
}

VorQString* VorQStringExCloneSubstring(const VorQString* text,
                                       int start,
                                       int count,
                                       MemoryHandle handle) {
  int length = VorQStringLen(text);
  if (length == 0 || start < 0 || count < 0)
    return nullptr;
  if (int64_t{start} + count > length)
    return nullptr;
  return CloneLength(text + start, count, handle);
}

VorQString* VorQCloneSubstring(const VorQString* text, int start, int count) {
  return VorQStringExCloneSubstring(text, start, count, VorQStringMemHandle);
}

int VorQStringExJoin(VorQString** out,
                     const VorQString* a,
                     const VorQString* b,
                     MemoryHandle handle) {
  if (!out || !a || !b)
    return -2;
  int length_a = VorQStringLen(a);
  int length_b = VorQStringLen(b);
  // Each part is sized with a terminator of its own; one element stays spare.
  VorQString* joined =
      VorQStringExAllocate(length_a + 1 + length_b + 1, handle);
  if (!joined)
    return -1;
  CopyTerminated(joined, a, length_a);
  CopyTerminated(joined + length_a, b, length_b);
  *out = joined;
  return 0;
}

int VorQStringJoin(VorQString** out, const VorQString* a, const VorQString* b) {
  return VorQStringExJoin(out, a, b, VorQStringMemHandle);
}
