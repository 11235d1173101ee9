#include "runtime/text/vorq_string_trim.h"

int VorQStringRTrim(VorQString* text) {
  for (int i = VorQStringLen(text) - 1; i >= 0 && text[i] == ' '; --i)
    text[i] = 0;
  return 0;
}

int VorQStringExRTrim(VorQString* text) {
  return VorQStringRTrim(text);
}

VorQString* VorQString_reverse(VorQString* text) {
  int length = VorQStringLen(text);
  for (int low = 0, high = length - 1; low < high; ++low, --high) {
    VorQString element = text[low];
    text[low] = text[high];
    text[high] = element;
  }
  return text;
}
