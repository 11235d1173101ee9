// Hexadecimal text to an unsigned 64-bit value, read from the last element
// towards the first. An 'x' or 'X' ends the digits, so "0x1F", "x1F" and
// "zzx1f" all give 31; any other non-digit gives -1 with *out untouched.
// Only the last 16 digits of a longer text count. Empty and too long text
// give 0. The result is 0, -1 for bad text, -2 for a null pointer or no
// memory. (The names say UI; the value has 64 bits.)
#ifndef RUNTIME_TEXT_VORQ_STRING_HEX_H_
#define RUNTIME_TEXT_VORQ_STRING_HEX_H_

#include <stdint.h>

#include "runtime/text/vorq_string.h"

extern "C" {

// Parses a clone made through VorQStringMemHandle, or through `handle`.
int VorQHexStringToUI(const VorQString* text, uint64_t* out);
int VorQHexStringExToUI(const VorQString* text,
                        uint64_t* out,
                        MemoryHandle handle);
// Parses `text` itself.
int VorQStringExHexCharToUI(const char* text, uint64_t* out);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_HEX_H_
