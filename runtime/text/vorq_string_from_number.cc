#include "runtime/text/vorq_string_from_number.h"

#include <stdio.h>

#include "runtime/text/text_helpers.h"
#include "runtime/text/vorq_string_sprintf.h"
#include "runtime/text/vorq_string_trim.h"

namespace {

const char kDigits[] = "0123456789";

// Writes the digits lowest first, then the sign, and turns the text round.
// The magnitude is taken in unsigned arithmetic, so INT64_MIN needs no twin.
int FormatInteger(int64_t value, char* destination) {
  uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value)
                                 : static_cast<uint64_t>(value);
  int count = 0;
  do {
    destination[count++] = kDigits[magnitude % 10];
    magnitude /= 10;
  } while (magnitude != 0);
  if (value < 0)
    destination[count++] = '-';
  destination[count] = 0;
  VorQString_reverse(destination);
  return count;
}

// Formats into a buffer of its own and copies when `capacity` holds it.
int FormatIntegerCopy(int64_t value, VorQString* destination, int capacity) {
  if (!destination)
    return -2;
  char text[kVorQStringInt64Text];
  int count = FormatInteger(value, text);
  if (capacity < count)
    return 0;
  CopyTerminated(destination, text, count);
  return count;
}

}  // namespace

int VorQStringI64ToChar(int64_t value, char* destination) {
  if (!destination)
    return -2;
  return FormatInteger(value, destination);
}

int VorQStringExI64ToChar(int64_t value, char* destination) {
  return VorQStringI64ToChar(value, destination);
}

int VorQStringItoChar(int32_t value, char* destination) {
  return VorQStringI64ToChar(value, destination);
}

int VorQStringExItoChar(int32_t value, char* destination) {
  return VorQStringI64ToChar(value, destination);
}

int VorQStringItoVorQString(int32_t value, VorQString* destination) {
  return FormatIntegerCopy(value, destination, kVorQStringIntText);
}

int VorQStringExItoVorQString(int32_t value, VorQString* destination) {
  return FormatIntegerCopy(value, destination, kVorQStringIntText);
}

int VorQStringI64ToVorQString(int64_t value,
                              VorQString* destination,
                              int capacity) {
  return FormatIntegerCopy(value, destination, capacity);
}

int VorQStringExI64ToVorQString(int64_t value,
                                VorQString* destination,
                                int capacity) {
  return FormatIntegerCopy(value, destination, capacity);
}

int VorQStringFToChar(double value, char* destination) {
  if (!destination)
    return -2;
  return sprintf(destination, "%g", value);
}

int VorQStringExFToChar(double value, char* destination) {
  return VorQStringFToChar(value, destination);
}

int VorQStringFToVorQString(double value, VorQString* destination, int size) {
  if (!destination)
    return -2;
  if (VorQStringSprintf(destination, size, "%g", value) != 0)
    return 0;
  return VorQStringLen(destination);
}

int VorQStringExFToVorQString(double value, VorQString* destination, int size) {
  return VorQStringFToVorQString(value, destination, size);
}
