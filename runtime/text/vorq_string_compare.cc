#include "runtime/text/vorq_string_compare.h"

#include <string.h>
#include <strings.h>

namespace {

// The order of two texts when either is null: null first.
int NullOrder(const char* a, const char* b) {
  return (a != nullptr) - (b != nullptr);
}

}  // namespace

int VorQStringCmp(const VorQString* a, const VorQString* b) {
  if (!a || !b)
    return NullOrder(a, b);
  return strcmp(a, b);
}

int VorQStringExCmp(const VorQString* a, const VorQString* b) {
  return VorQStringCmp(a, b);
}

int VorQStringNCmp(const VorQString* a, const VorQString* b, size_t count) {
  if (!a || !b)
    return NullOrder(a, b);
  return strncmp(a, b, count);
}

int VorQStringExNCmp(const VorQString* a, const VorQString* b, size_t count) {
  return VorQStringNCmp(a, b, count);
}

int VorQStringCaseCmp(const VorQString* a, const VorQString* b) {
  if (!a || !b)
    return NullOrder(a, b);
  return strcasecmp(a, b);
}

int VorQStringExCaseCmp(const VorQString* a, const VorQString* b) {
  return VorQStringCaseCmp(a, b);
}

int VorQStringNCaseCmp(const VorQString* a, const VorQString* b, size_t count) {
  if (!a || !b)
    return NullOrder(a, b);
  return strncasecmp(a, b, count);
}

int VorQStringExNCaseCmp(const VorQString* a,
                         const VorQString* b,
                         size_t count) {
  return VorQStringNCaseCmp(a, b, count);
}

int VorQStringCmpChar(const char* a, const char* b) {
  if (!a || !b)
    return -1;
  return strcmp(a, b);
}

int VorQStringExCmpChar(const char* a, const char* b) {
  return VorQStringCmpChar(a, b);
}
