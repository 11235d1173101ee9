// Helpers the text families share; not part of the runtime's interface.
#ifndef RUNTIME_TEXT_TEXT_HELPERS_H_
#define RUNTIME_TEXT_TEXT_HELPERS_H_

#include <string.h>

#include "runtime/text/vorq_string.h"

// The length rule shared by VorQStrings and UTF-16 text: counting stops at
// the terminator or at the limit, and text that reaches the limit counts as
// empty.
template <typename Unit>
int BoundedLength(const Unit* text) {
  if (!text)
    return 0;
  int count = 0;
  while (count < kVorQStringLimit && text[count] != 0)
    ++count;
  return count < kVorQStringLimit ? count : 0;
}

// Copies `length` elements and a terminator; memmove, as callers may copy
// within one buffer. A null source has length 0 and isn't touched.
inline void CopyTerminated(char* destination,
                           const char* source,
                           size_t length) {
  if (length > 0)
    memmove(destination, source, length);
  destination[length] = 0;
}

#endif  // RUNTIME_TEXT_TEXT_HELPERS_H_
