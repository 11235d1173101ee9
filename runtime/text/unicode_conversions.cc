#include "runtime/text/unicode_conversions.h"

#include "runtime/text/text_helpers.h"

namespace {

constexpr uint32_t kMaxCodePoint = 0x10FFFF;
constexpr uint32_t kFirstSupplementary = 0x10000;

bool IsHighSurrogate(uint32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(uint32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Bytes of the sequence that `lead` starts, 0 when it can't start one.
int SequenceLength(unsigned char lead) {
  if (lead < 0x80)
    return 1;
  if (lead < 0xC0)
    return 0;
  if (lead < 0xE0)
    return 2;
  if (lead < 0xF0)
    return 3;
  if (lead < 0xF8)
    return 4;
  return 0;
}

int DecodeUTF8(const unsigned char* text, size_t index, uint32_t* code_point) {
  static const unsigned char kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  int length = SequenceLength(text[index]);
  if (length == 0)
    return 0;
  uint32_t value = text[index] & kLeadBits[length];
  for (int k = 1; k < length; ++k) {
    unsigned char next = text[index + k];
    if (next == 0)
      return 0;  // Cut short: don't read behind the terminator.
    value = value << 6 | (next & 0x3F);
  }
  *code_point = value;
  return length;
}

int DecodeUTF16(const uint16_t* text, size_t index, uint32_t* code_point) {
  uint32_t unit = text[index];
  if (IsLowSurrogate(unit))
    return -1;
  if (!IsHighSurrogate(unit)) {
    *code_point = unit;
    return 1;
  }
  uint32_t next = text[index + 1];
  if (next == 0)
    return -1;  // Cut short: don't read behind the terminator.
  *code_point = ((unit & 0x3FF) << 10 | (next & 0x3FF)) + kFirstSupplementary;
  return 2;
}

}  // namespace

int UTF8StringToISO646Char(const unsigned char* text,
                           int index,
                           uint32_t* code_point) {
  if (!text || !code_point || index < 0)
    return -2;
  return DecodeUTF8(text, index, code_point);
}

int UTF16StringToISO10646Char(const uint16_t* text,
                              int index,
                              uint32_t* code_point) {
  if (!text || !code_point || index < 0)
    return -2;
  return DecodeUTF16(text, index, code_point);
}

int ISO10646ToUTF16(uint32_t code_point, uint16_t* out) {
  if (!out)
    return -2;
  if (code_point > kMaxCodePoint)
    return -1;
  if (code_point < kFirstSupplementary) {
    out[0] = static_cast<uint16_t>(code_point);
    return 1;
  }
  uint32_t c = code_point - kFirstSupplementary;
  out[0] = static_cast<uint16_t>(0xD800 | c >> 10);
  out[1] = static_cast<uint16_t>(0xDC00 | (c & 0x3FF));
  return 2;
}

int ISO10646ToUTF8(int32_t code_point, unsigned char* out) {
  if (!out)
    return -2;
  if (code_point < 0 || static_cast<uint32_t>(code_point) > kMaxCodePoint)
    return -1;
  uint32_t c = static_cast<uint32_t>(code_point);
  if (c < 0x80) {
    out[0] = static_cast<unsigned char>(c);
    return 1;
  }
  int length = c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  static const unsigned char kLeadMarks[] = {0, 0, 0xC0, 0xE0, 0xF0};
  for (int k = length - 1; k > 0; --k) {
    out[k] = static_cast<unsigned char>(0x80 | (c & 0x3F));
    c >>= 6;
  }
  out[0] = static_cast<unsigned char>(kLeadMarks[length] | c);
  return length;
}

size_t UTF8StringLen(const unsigned char* text) {
  if (!text)
    return 0;
  return strlen(reinterpret_cast<const char*>(text));
}

int UTF8StringToISO10646(const unsigned char* text, uint32_t* out) {
  if (!text || !out)
    return -2;
  size_t length = UTF8StringLen(text);
  uint32_t last = 0;
  int written = 0;
  for (size_t index = 0; index < length;) {
    int consumed = DecodeUTF8(text, index, &last);
    out[written++] = last;
    index += consumed > 0 ? consumed : 1;
  }
  return written;
}

int UTF16StringToISO10646(const uint16_t* text, uint32_t* out) {
  if (!out)
    return -2;
  int length = BoundedLength(text);
  int written = 0;
  for (int index = 0; index < length;) {
    int consumed = DecodeUTF16(text, index, &out[written]);
    if (consumed < 0)
      return -1;
    ++written;
    index += consumed;
  }
  return written;
}

int VorQStringToUTF8String(const VorQString* source,
                           unsigned char* destination,
                           int capacity) {
  if (!destination)
    return -2;
  int length = VorQStringLen(source);
  if (capacity < length + 1)
    return -1;
  CopyTerminated(reinterpret_cast<char*>(destination), source, length);
  return length + 1;
}

int UTF8StringToVorQString(const unsigned char* source,
                           VorQString* destination,
                           int capacity) {
  if (!source || !destination)
    return -2;
  size_t length = UTF8StringLen(source);
  if (length > 0 && (capacity < 0 || length > static_cast<size_t>(capacity)))
    return -1;
  CopyTerminated(destination, reinterpret_cast<const char*>(source), length);
  return static_cast<int>(length + 1);
}
