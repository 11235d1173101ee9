// Copies into the caller's buffers, which must hold what is copied: no
// function here is told a capacity. A null destination gives -2 and nothing
// is written.
#ifndef RUNTIME_TEXT_VORQ_STRING_COPY_H_
#define RUNTIME_TEXT_VORQ_STRING_COPY_H_

#include <stddef.h>

#include "runtime/text/vorq_string.h"

extern "C" {

// Copies `source` with its terminator; null, empty and too long sources leave
// `destination` empty. Gives 0.
int VorQStringCpy(VorQString* destination, const VorQString* source);
int VorQStringExCpy(VorQString* destination, const VorQString* source);
int VorQStringCpyCharToVorQString(VorQString* destination, const char* source);
int VorQStringExCpyCharToVorQString(VorQString* destination,
                                    const char* source);

// As VorQStringCpy, but a null, empty or too long source gives -1 and leaves
// `destination` as it was.
int VorQStringCpyVorQStringToChar(char* destination, const VorQString* source);
int VorQStringExCpyVorQStringToChar(char* destination,
                                    const VorQString* source);

// Copies the ASCII bytes of UTF-8 text, dropping every byte of a multi-byte
// sequence, and terminates. Gives 0.
int VorQStringCpyUTF8ToVorQString(VorQString* destination,
                                  const unsigned char* source);
int VorQStringExCpyUTF8ToVorQString(VorQString* destination,
                                    const unsigned char* source);

// Copies up to `count` elements and fills the rest of `count` with 0; there
// is no terminator when the source has `count` elements or more. Gives 0.
int VorQStringNCpy(VorQString* destination,
                   const VorQString* source,
                   int count);
int VorQStringExNCpy(VorQString* destination,
                     const VorQString* source,
                     int count);

// strncpy, without the length limit. -2 for a null pointer, else 0.
int VorQStringCpyChar(char* destination, const char* source, size_t count);
int VorQStringExCpyChar(char* destination, const char* source, size_t count);

// Writes at most kVorQStringReplaceSpan elements of `source`, up to its
// terminator, to `destination` with `to` for every `from`; writes no
// terminator. The two may be one buffer. -2 for a null pointer, else 0.
constexpr int kVorQStringReplaceSpan = 1024;
int VorQStringReplace(const VorQString* source,
                      VorQString* destination,
                      VorQString from,
                      VorQString to);
int VorQStringExReplace(const VorQString* source,
                        VorQString* destination,
                        VorQString from,
                        VorQString to);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_COPY_H_
