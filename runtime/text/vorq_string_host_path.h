// Backslash paths to slash paths. "C:\dir\f.mkv" becomes "C:/dir/f.mkv"; a
// leading double backslash becomes one slash, so "\\srv\a" is "/srv/a".
// Doubled separators anywhere else fail, as does a slash pair behind the
// first two elements ("//a/b" passes, "a//b" doesn't).
// `destination` must hold the source's length plus the terminator; the
// result is never longer. It gives 0, or -1 with `destination` empty.
#ifndef RUNTIME_TEXT_VORQ_STRING_HOST_PATH_H_
#define RUNTIME_TEXT_VORQ_STRING_HOST_PATH_H_

#include "runtime/text/vorq_string.h"

extern "C" {

int VorQStringConvertCharPathToHost(const char* source, char* destination);

// The same on VorQStrings, converting in two blocks taken through
// VorQStringMemHandle; too long text converts as empty, and a failed
// allocation gives -1.
int VorQStringConvertPathToHost(const VorQString* source,
                                VorQString* destination);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_HOST_PATH_H_
