#include "runtime/text/vorq_string_to_number.h"

#include <ctype.h>
#include <errno.h>
#include <stdlib.h>

#include "runtime/text/vorq_string_clone.h"

namespace {

int32_t ParseI(const char* text) {
  long value = strtol(text, nullptr, 10);
  if (value > INT32_MAX)
    return INT32_MAX;
  if (value < INT32_MIN)
    return INT32_MIN;
  return static_cast<int32_t>(value);
}

// strtoul as it behaves with a 32-bit long: a magnitude beyond 32 bits
// saturates whatever the sign, and a negated one wraps within 32 bits.
uint32_t ParseUI(const char* text) {
  errno = 0;
  unsigned long value = strtoul(text, nullptr, 10);
  if (errno == ERANGE)
    return UINT32_MAX;
  while (isspace(static_cast<unsigned char>(*text)))
    ++text;
  bool negated = *text == '-';
  uint64_t magnitude = negated ? 0 - uint64_t{value} : uint64_t{value};
  if (magnitude > UINT32_MAX)
    return UINT32_MAX;
  uint32_t result = static_cast<uint32_t>(magnitude);
  return negated ? 0 - result : result;
}

int64_t ParseI64(const char* text) {
  return strtoll(text, nullptr, 10);
}

uint64_t ParseUI64(const char* text) {
  return strtoull(text, nullptr, 10);
}

double ParseF(const char* text) {
  return atof(text);
}

template <typename Number, Number (*Parse)(const char*)>
int ParseText(const char* text, Number* out) {
  if (!text || !out)
    return -2;
  *out = Parse(text);
  return 0;
}

template <typename Number, Number (*Parse)(const char*)>
int ParseClone(const VorQString* text, Number* out) {
  if (!text || !out)
    return -2;
  VorQString* clone = VorQCloneString(text);
  if (!clone)
    return -2;
  *out = Parse(clone);
  VorQStringDeallocate(clone);
  return 0;
}

}  // namespace

int VorQStringToI(const VorQString* text, int32_t* out) {
  return ParseClone<int32_t, ParseI>(text, out);
}
int VorQStringExToI(const VorQString* text, int32_t* out) {
  return ParseClone<int32_t, ParseI>(text, out);
}
int VorQStringToUI(const VorQString* text, uint32_t* out) {
  return ParseClone<uint32_t, ParseUI>(text, out);
}
int VorQStringExToUI(const VorQString* text, uint32_t* out) {
  return ParseClone<uint32_t, ParseUI>(text, out);
}
int VorQStringToI64(const VorQString* text, int64_t* out) {
  return ParseClone<int64_t, ParseI64>(text, out);
}
int VorQStringExToI64(const VorQString* text, int64_t* out) {
  return ParseClone<int64_t, ParseI64>(text, out);
}
int VorQStringToUI64(const VorQString* text, uint64_t* out) {
  return ParseClone<uint64_t, ParseUI64>(text, out);
}
int VorQStringExToUI64(const VorQString* text, uint64_t* out) {
  return ParseClone<uint64_t, ParseUI64>(text, out);
}
int VorQStringToF(const VorQString* text, double* out) {
  return ParseClone<double, ParseF>(text, out);
}
int VorQStringExToF(const VorQString* text, double* out) {
  return ParseClone<double, ParseF>(text, out);
}

int VorQStringCharToI(const char* text, int32_t* out) {
  return ParseText<int32_t, ParseI>(text, out);
}
int VorQStringExCharToI(const char* text, int32_t* out) {
  return ParseText<int32_t, ParseI>(text, out);
}
int VorQStringCharToUI(const char* text, uint32_t* out) {
  return ParseText<uint32_t, ParseUI>(text, out);
}
int VorQStringExCharToUI(const char* text, uint32_t* out) {
  return ParseText<uint32_t, ParseUI>(text, out);
}
int VorQStringCharToI64(const char* text, int64_t* out) {
  return ParseText<int64_t, ParseI64>(text, out);
}
int VorQStringExCharToI64(const char* text, int64_t* out) {
  return ParseText<int64_t, ParseI64>(text, out);
}
int VorQStringCharToUI64(const char* text, uint64_t* out) {
  return ParseText<uint64_t, ParseUI64>(text, out);
}
int VorQStringExCharToUI64(const char* text, uint64_t* out) {
  return ParseText<uint64_t, ParseUI64>(text, out);
}
int VorQStringCharToF(const char* text, double* out) {
  return ParseText<double, ParseF>(text, out);
}
int VorQStringExCharToF(const char* text, double* out) {
  return ParseText<double, ParseF>(text, out);
}
