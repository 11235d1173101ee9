#include "runtime/text/vorq_string_copy.h"

#include <string.h>

#include "runtime/text/text_helpers.h"

int VorQStringCpy(VorQString* destination, const VorQString* source) {
  if (!destination)
    return -2;
  CopyTerminated(destination, source, VorQStringLen(source));
  return 0;
}

int VorQStringExCpy(VorQString* destination, const VorQString* source) {
  return VorQStringCpy(destination, source);
}

int VorQStringCpyCharToVorQString(VorQString* destination, const char* source) {
  return VorQStringCpy(destination, source);
}

int VorQStringExCpyCharToVorQString(VorQString* destination,
                                    const char* source) {
  return VorQStringCpy(destination, source);
}

int VorQStringCpyVorQStringToChar(char* destination, const VorQString* source) {
  if (!destination)
    return -2;
  int length = VorQStringLen(source);
  if (length == 0)
    return -1;
  CopyTerminated(destination, source, length);
  return 0;
}

int VorQStringExCpyVorQStringToChar(char* destination,
                                    const VorQString* source) {
  return VorQStringCpyVorQStringToChar(destination, source);
}

int VorQStringCpyUTF8ToVorQString(VorQString* destination,
                                  const unsigned char* source) {
  if (!destination)
    return -2;
  const char* text = reinterpret_cast<const char*>(source);
  int length = VorQStringLen(text);
  int written = 0;
  for (int i = 0; i < length; ++i) {
    if (source[i] < 0x80)
      destination[written++] = text[i];
  }
  destination[written] = 0;
  return 0;
}

int VorQStringExCpyUTF8ToVorQString(VorQString* destination,
                                    const unsigned char* source) {
  return VorQStringCpyUTF8ToVorQString(destination, source);
}

int VorQStringNCpy(VorQString* destination,
                   const VorQString* source,
                   int count) {
  if (!destination)
    return -2;
  if (count <= 0)
    return 0;
  int length = VorQStringLen(source);
  int copied = length < count ? length : count;
  if (copied > 0)
    memmove(destination, source, copied);
  memset(destination + copied, 0, count - copied);
  return 0;
}

int VorQStringExNCpy(VorQString* destination,
                     const VorQString* source,
                     int count) {
  return VorQStringNCpy(destination, source, count);
}

int VorQStringCpyChar(char* destination, const char* source, size_t count) {
  if (!destination || !source)
    return -2;
  strncpy(destination, source, count);
  return 0;
}

int VorQStringExCpyChar(char* destination, const char* source, size_t count) {
  return VorQStringCpyChar(destination, source, count);
}

int VorQStringReplace(const VorQString* source,
                      VorQString* destination,
                      VorQString from,
                      VorQString to) {
  if (!source || !destination)
    return -2;
  for (int i = 0; i < kVorQStringReplaceSpan && source[i] != 0; ++i)
    destination[i] = source[i] == from ? to : source[i];
  return 0;
}

int VorQStringExReplace(const VorQString* source,
                        VorQString* destination,
                        VorQString from,
                        VorQString to) {
  return VorQStringReplace(source, destination, from, to);
}
