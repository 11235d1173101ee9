#include "runtime/text/vorq_string_sprintf.h"

#include <stdio.h>
#include <string.h>

int VorQStringSprintfVA(VorQString* destination,
                        int size,
                        const char* format,
                        va_list arguments) {
  if (!destination || size < 1 || !format)
    return -2;
  memset(destination, 0, size);
  // The limit of size - 1 keeps the buffer's last element 0 whatever
  // vsnprintf does with its own last one.
  int written = vsnprintf(destination, size - 1, format, arguments);
  return written == -1 ? -1 : 0;
}

int VorQStringSprintf(VorQString* destination,
                      int size,
                      const char* format,
                      ...) {
  va_list arguments;
  va_start(arguments, format);
  int result = VorQStringSprintfVA(destination, size, format, arguments);
  va_end(arguments);
  return result;
}

int VorQStringExSprintf(VorQString* destination,
                        int size,
                        const char* format,
                        ...) {
  va_list arguments;
  va_start(arguments, format);
  int result = VorQStringSprintfVA(destination, size, format, arguments);
  va_end(arguments);
  return result;
}

int VorQStringSprintfLengthNeeded(const char* format, va_list arguments) {
  if (!format)
    return 0;
  return vsnprintf(nullptr, 0, format, arguments);
}
