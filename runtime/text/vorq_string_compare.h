// Comparisons, straight through to the C library and without the length
// limit. A null pointer orders before any text and equals another null, so
// that a careless caller gets an answer rather than a crash.
#ifndef RUNTIME_TEXT_VORQ_STRING_COMPARE_H_
#define RUNTIME_TEXT_VORQ_STRING_COMPARE_H_

#include <stddef.h>

#include "runtime/text/vorq_string.h"

extern "C" {

int VorQStringCmp(const VorQString* a, const VorQString* b);
int VorQStringExCmp(const VorQString* a, const VorQString* b);
int VorQStringNCmp(const VorQString* a, const VorQString* b, size_t count);
int VorQStringExNCmp(const VorQString* a, const VorQString* b, size_t count);
int VorQStringCaseCmp(const VorQString* a, const VorQString* b);
int VorQStringExCaseCmp(const VorQString* a, const VorQString* b);
int VorQStringNCaseCmp(const VorQString* a, const VorQString* b, size_t count);
int VorQStringExNCaseCmp(const VorQString* a,
                         const VorQString* b,
                         size_t count);

// strcmp, but -1 when either is null.
int VorQStringCmpChar(const char* a, const char* b);
int VorQStringExCmpChar(const char* a, const char* b);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_COMPARE_H_
