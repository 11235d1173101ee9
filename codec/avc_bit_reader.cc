#include "codec/avc_bit_reader.h"

namespace {

unsigned int BitAt(const unsigned char* data, unsigned int bitPosition) {
  return (data[bitPosition / 8] >> (7 - bitPosition % 8)) & 1;
}

bool IsEmulationPrevention(const unsigned char* source, unsigned int size,
                           unsigned int i) {
  return i >= 2 && i + 1 < size && source[i - 2] == 0 && source[i - 1] == 0 &&
         source[i] == 3 && source[i + 1] < 4;
}

}  // namespace

uint64_t AVCReadUintBits(unsigned char* data, unsigned int bitPosition,
                         unsigned int bitCount) {
  uint64_t value = 0;
  for (unsigned int i = 0; i < bitCount; ++i)
    value = (value << 1) | BitAt(data, bitPosition + i);
  return value;
}

bool ReadUINTBits(unsigned char* data, unsigned int bitPosition,
                  unsigned int limit, unsigned int bitCount,
                  unsigned long long* result) {
  if (bitPosition == limit)
    return false;
  const uint64_t value = AVCReadUintBits(data, bitPosition, bitCount);
  if (result)
    *result = value;
  return true;
}

uint64_t AVCReadExpGolomb(unsigned char* data, unsigned int bitPosition,
                          unsigned int* bitsUsed) {
  unsigned int zeros = 0;
  while (BitAt(data, bitPosition + zeros) == 0)
    ++zeros;
  *bitsUsed = 2 * zeros + 1;
  const uint64_t suffix = AVCReadUintBits(data, bitPosition + zeros + 1, zeros);
  // 2^zeros - 1, taken modulo 2^64 like the suffix.
  const uint64_t base = zeros < 64 ? (uint64_t{1} << zeros) - 1 : ~uint64_t{0};
  return base + suffix;
}

int64_t AVCReadSignedExpGolomb(unsigned char* data, unsigned int bitPosition,
                               unsigned int* bitsUsed) {
  const uint64_t code = AVCReadExpGolomb(data, bitPosition, bitsUsed);
  const int64_t magnitude = static_cast<int64_t>(code / 2 + code % 2);
  return code % 2 ? magnitude : -magnitude;
}

int AVCCopyRemove_Emulation_Prevention_0x03_Byte(unsigned char* source,
                                                 unsigned int sourceSize,
                                                 unsigned char* target,
                                                 unsigned int* targetSize) {
  if (!source || !target || !targetSize || sourceSize == 0 ||
      sourceSize > *targetSize)
    return -2;
  unsigned int written = 0;
  for (unsigned int i = 0; i < sourceSize; ++i) {
    if (!IsEmulationPrevention(source, sourceSize, i))
      target[written++] = source[i];
  }
  *targetSize = written;
  return 0;
}
