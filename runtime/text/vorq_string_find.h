// Searches for a pattern in a text. Results are element indexes of the text,
// or -1 when there is no match, or the text is null, empty or too long, or
// the pattern is null. The whole pattern must lie inside the text; an empty
// pattern matches at the first position searched.
#ifndef RUNTIME_TEXT_VORQ_STRING_FIND_H_
#define RUNTIME_TEXT_VORQ_STRING_FIND_H_

#include "runtime/text/vorq_string.h"

extern "C" {

int VorQStringFindFirst(const VorQString* pattern, const VorQString* text);
int VorQStringExFindFirst(const VorQString* pattern, const VorQString* text);

// The first match at or behind `start`; -1 for a start outside the text.
int VorQStringFindFirstAtIndex(const VorQString* pattern,
                               const VorQString* text,
                               int start);
int VorQStringExFindFirstAtIndex(const VorQString* pattern,
                                 const VorQString* text,
                                 int start);

// The last match; an empty pattern gives the last index of the text.
int VorQStringFindLast(const VorQString* pattern, const VorQString* text);
int VorQStringExFindLast(const VorQString* pattern, const VorQString* text);

// strcspn, without the length limit; -2 when either is null.
int VorQStringSpanCompliment(const VorQString* text, const VorQString* reject);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_FIND_H_
