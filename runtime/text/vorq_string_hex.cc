#include "runtime/text/vorq_string_hex.h"

#include "runtime/text/vorq_string_clone.h"

namespace {

int HexDigit(char element) {
  if (element >= '0' && element <= '9')
    return element - '0';
  if (element >= 'a' && element <= 'f')
    return element - 'a' + 10;
  if (element >= 'A' && element <= 'F')
    return element - 'A' + 10;
  return -1;
}

int ParseHex(const char* text, uint64_t* out) {
  uint64_t value = 0;
  // Wraps to 0 after 16 digits, so earlier digits add nothing.
  uint64_t multiplier = 1;
  for (int i = VorQStringLen(text) - 1; i >= 0; --i) {
    int digit = HexDigit(text[i]);
    if (digit < 0) {
      if (text[i] == 'x' || text[i] == 'X')
        break;
      return -1;
    }
    value += digit * multiplier;
    multiplier *= 16;
  }
  *out = value;
  return 0;
}

}  // namespace

int VorQHexStringExToUI(const VorQString* text,
                        uint64_t* out,
                        MemoryHandle handle) {
  if (!text || !out)
    return -2;
  VorQString* clone = VorQStringExClone(text, handle);
  if (!clone)
    return -2;
  int result = ParseHex(clone, out);
  VorQStringExDeallocate(clone, handle);
  return result;
}

int VorQHexStringToUI(const VorQString* text, uint64_t* out) {
  return VorQHexStringExToUI(text, out, VorQStringMemHandle);
}

int VorQStringExHexCharToUI(const char* text, uint64_t* out) {
  if (!text || !out)
    return -2;
  return ParseHex(text, out);
}
