// Formatting into the caller's buffer of `size` elements. The whole buffer
// is cleared first, and the text is cut one element shorter than vsnprintf
// would cut it: at most size - 2 elements, the last one always 0.
#ifndef RUNTIME_TEXT_VORQ_STRING_SPRINTF_H_
#define RUNTIME_TEXT_VORQ_STRING_SPRINTF_H_

#include <stdarg.h>

#include "runtime/text/vorq_string.h"

extern "C" {

// 0, also when the text was cut; -1 when vsnprintf fails; -2 for a null
// buffer or format, or a size below 1.
int VorQStringSprintf(VorQString* destination,
                      int size,
                      const char* format,
                      ...) __attribute__((format(printf, 3, 4)));
int VorQStringExSprintf(VorQString* destination,
                        int size,
                        const char* format,
                        ...) __attribute__((format(printf, 3, 4)));
int VorQStringSprintfVA(VorQString* destination,
                        int size,
                        const char* format,
                        va_list arguments)
    __attribute__((format(printf, 3, 0)));

// The length vsnprintf gives for the whole text; 0 for a null format.
int VorQStringSprintfLengthNeeded(const char* format, va_list arguments)
    __attribute__((format(printf, 1, 0)));

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_SPRINTF_H_
