// In-place edits of a text: trailing spaces and reversal.
#ifndef RUNTIME_TEXT_VORQ_STRING_TRIM_H_
#define RUNTIME_TEXT_VORQ_STRING_TRIM_H_

#include "runtime/text/vorq_string.h"

extern "C" {

// Overwrites trailing spaces (0x20 only) with 0. Null, empty and too long
// text stays as it is. Gives 0.
int VorQStringRTrim(VorQString* text);
int VorQStringExRTrim(VorQString* text);

// Reverses the elements in place and gives `text`; null, one-element and too
// long text stays as it is.
VorQString* VorQString_reverse(VorQString* text);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_TRIM_H_
