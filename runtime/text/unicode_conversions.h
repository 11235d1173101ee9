// Conversions between UTF-8, UTF-16 (host byte order), code points and
// VorQStrings. Nothing here validates: decoders go by the lead byte or unit
// and trust what follows, so overlong forms, surrogates and values above
// 0x10FFFF pass. They never read behind a terminator, though: a sequence the
// terminator cuts short decodes as a lead that can't start one.
// Output buffers belong to the caller and must hold what is written; only
// the two VorQString copies are told a capacity. Null pointers give -2.
#ifndef RUNTIME_TEXT_UNICODE_CONVERSIONS_H_
#define RUNTIME_TEXT_UNICODE_CONVERSIONS_H_

#include <stddef.h>
#include <stdint.h>

#include "runtime/text/vorq_string.h"

extern "C" {

// Decodes the UTF-8 character at `index`: bytes consumed, 1 to 4, or 0 for a
// byte that can't lead a sequence, with *code_point left as it was. Decodes
// all of UTF-8, not only the 7-bit set its name suggests.
int UTF8StringToISO646Char(const unsigned char* text,
                           int index,
                           uint32_t* code_point);

// Decodes the UTF-16 character at `index`: units consumed, 1 or 2, or -1 for
// a low surrogate in lead position, with *code_point left as it was.
int UTF16StringToISO10646Char(const uint16_t* text,
                              int index,
                              uint32_t* code_point);

// Units written to `out`, 1 or 2; -1 above 0x10FFFF. Surrogates pass as one
// unit. No terminator.
int ISO10646ToUTF16(uint32_t code_point, uint16_t* out);

// Bytes written to `out`, 1 to 4; -1 when negative or above 0x10FFFF. No
// terminator.
int ISO10646ToUTF8(int32_t code_point, unsigned char* out);

// Bytes before the terminator, with no limit; 0 for null.
size_t UTF8StringLen(const unsigned char* text);

// Decodes the whole text into `out` (no terminator) and gives the count. A
// byte that can't lead repeats the code point decoded last, or 0.
int UTF8StringToISO10646(const unsigned char* text, uint32_t* out);

// Decodes the whole text into `out` (no terminator) and gives the count; 0
// for null, empty and too long text. A low surrogate in lead position ends
// the walk with -1, keeping what was stored.
int UTF16StringToISO10646(const uint16_t* text, uint32_t* out);

// Copies `source` and a terminator into `destination`, which has room for
// `capacity` elements, terminator included. Gives the elements written, or
// -1 when they don't fit. Null, and too long text, count as empty.
int VorQStringToUTF8String(const VorQString* source,
                           unsigned char* destination,
                           int capacity);

// Copies `source` and a terminator into `destination`, which must hold
// `capacity` elements plus the terminator. Gives the elements written,
// terminator included, or -1 when a non-empty `source` is longer than
// `capacity`. Empty text is always written.
int UTF8StringToVorQString(const unsigned char* source,
                           VorQString* destination,
                           int capacity);

}  // extern "C"

#endif  // RUNTIME_TEXT_UNICODE_CONVERSIONS_H_
