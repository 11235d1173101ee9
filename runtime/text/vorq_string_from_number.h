// Numbers to decimal text in the caller's buffer. Integers give the count of
// characters written, sign included and terminator not; a destination must
// hold kVorQStringIntText elements for I and kVorQStringInt64Text for I64.
// A null destination gives -2. The VorQString forms build the text in a
// buffer of their own and copy it.
#ifndef RUNTIME_TEXT_VORQ_STRING_FROM_NUMBER_H_
#define RUNTIME_TEXT_VORQ_STRING_FROM_NUMBER_H_

#include <stdint.h>

#include "runtime/text/vorq_string.h"

constexpr int kVorQStringIntText = 12;    // "-2147483648" and terminator.
constexpr int kVorQStringInt64Text = 21;  // "-9223372036854775808" and more.

extern "C" {

int VorQStringItoChar(int32_t value, char* destination);
int VorQStringExItoChar(int32_t value, char* destination);
int VorQStringI64ToChar(int64_t value, char* destination);
int VorQStringExI64ToChar(int64_t value, char* destination);
int VorQStringItoVorQString(int32_t value, VorQString* destination);
int VorQStringExItoVorQString(int32_t value, VorQString* destination);

// `destination` holds `capacity` characters and a terminator; text that
// doesn't fit gives 0 and leaves it untouched.
int VorQStringI64ToVorQString(int64_t value,
                              VorQString* destination,
                              int capacity);
int VorQStringExI64ToVorQString(int64_t value,
                                VorQString* destination,
                                int capacity);

// "%g" into `destination`, whose size isn't checked; sprintf's result.
int VorQStringFToChar(double value, char* destination);
int VorQStringExFToChar(double value, char* destination);

// "%g" through VorQStringSprintf into `size` elements, so at most size - 2
// characters: the length of the text, or 0 when formatting failed or gave
// nothing.
int VorQStringFToVorQString(double value, VorQString* destination, int size);
int VorQStringExFToVorQString(double value, VorQString* destination, int size);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_FROM_NUMBER_H_
