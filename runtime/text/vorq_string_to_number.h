// Decimal text to numbers, by the C library's rules: leading white space and
// a sign are accepted, digits are read up to the first other character, and
// text without digits gives 0. The value goes to *out; the result is 0, or
// -2 for a null pointer or no memory. Bad text can't be reported.
//
// The 32-bit forms saturate at their own limits (2147483647, -2147483648,
// 4294967295) also where long is 64 bits wide, and a negated text for UI
// wraps as a 32-bit strtoul does ("-1" gives 4294967295).
#ifndef RUNTIME_TEXT_VORQ_STRING_TO_NUMBER_H_
#define RUNTIME_TEXT_VORQ_STRING_TO_NUMBER_H_

#include <stdint.h>

#include "runtime/text/vorq_string.h"

extern "C" {

// These parse a clone made through VorQStringMemHandle, so text at or
// beyond the length limit reads as empty. Ex takes no handle here.
int VorQStringToI(const VorQString* text, int32_t* out);
int VorQStringExToI(const VorQString* text, int32_t* out);
int VorQStringToUI(const VorQString* text, uint32_t* out);
int VorQStringExToUI(const VorQString* text, uint32_t* out);
int VorQStringToI64(const VorQString* text, int64_t* out);
int VorQStringExToI64(const VorQString* text, int64_t* out);
int VorQStringToUI64(const VorQString* text, uint64_t* out);
int VorQStringExToUI64(const VorQString* text, uint64_t* out);
int VorQStringToF(const VorQString* text, double* out);
int VorQStringExToF(const VorQString* text, double* out);

// These parse `text` itself, with no length limit.
int VorQStringCharToI(const char* text, int32_t* out);
int VorQStringExCharToI(const char* text, int32_t* out);
int VorQStringCharToUI(const char* text, uint32_t* out);
int VorQStringExCharToUI(const char* text, uint32_t* out);
int VorQStringCharToI64(const char* text, int64_t* out);
int VorQStringExCharToI64(const char* text, int64_t* out);
int VorQStringCharToUI64(const char* text, uint64_t* out);
int VorQStringExCharToUI64(const char* text, uint64_t* out);
int VorQStringCharToF(const char* text, double* out);
int VorQStringExCharToF(const char* text, double* out);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_TO_NUMBER_H_
