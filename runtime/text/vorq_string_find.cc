#include "runtime/text/vorq_string_find.h"

#include <string.h>

namespace {

// Whether `pattern` matches `text` at `position`, within `length` elements.
bool MatchesAt(const VorQString* pattern,
               const VorQString* text,
               int length,
               int position) {
  for (int k = 0; pattern[k] != 0; ++k) {
    if (position + k >= length || text[position + k] != pattern[k])
      return false;
  }
  return true;
}

}  // namespace

int VorQStringFindFirstAtIndex(const VorQString* pattern,
                               const VorQString* text,
                               int start) {
  int length = VorQStringLen(text);
  if (!pattern || start < 0 || start >= length)
    return -1;
  for (int position = start; position < length; ++position) {
    if (MatchesAt(pattern, text, length, position))
      return position;
  }
  return -1;
}

int VorQStringExFindFirstAtIndex(const VorQString* pattern,
                                 const VorQString* text,
                                 int start) {
  return VorQStringFindFirstAtIndex(pattern, text, start);
}

int VorQStringFindFirst(const VorQString* pattern, const VorQString* text) {
  return VorQStringFindFirstAtIndex(pattern, text, 0);
}

int VorQStringExFindFirst(const VorQString* pattern, const VorQString* text) {
  return VorQStringFindFirstAtIndex(pattern, text, 0);
}

int VorQStringFindLast(const VorQString* pattern, const VorQString* text) {
  int length = VorQStringLen(text);
  if (!pattern)
    return -1;
  for (int position = length - 1; position >= 0; --position) {
    if (MatchesAt(pattern, text, length, position))
      return position;
  }
  return -1;
}

int VorQStringExFindLast(const VorQString* pattern, const VorQString* text) {
  return VorQStringFindLast(pattern, text);
}

int VorQStringSpanCompliment(const VorQString* text, const VorQString* reject) {
  if (!text || !reject)
    return -2;
  return static_cast<int>(strcspn(text, reject));
}
