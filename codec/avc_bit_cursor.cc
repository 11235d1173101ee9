#include "codec/avc_bit_cursor.h"

#include <algorithm>
#include <limits>

#include "codec/avc_bit_reader.h"

AVCBitCursor::AVCBitCursor(unsigned char* data, unsigned int size)
    : data_(data),
      // Positions are 32-bit: bits beyond the last one they can name are out
      // of reach, which no parameter set comes near.
      end_(static_cast<unsigned int>(
          std::min<uint64_t>(uint64_t{size} * 8,
                             std::numeric_limits<unsigned int>::max()))) {}

bool AVCBitCursor::Holds(uint64_t bitCount) const {
  return bitCount <= end_ - position_;
}

bool AVCBitCursor::HoldsExpGolomb() const {
  for (unsigned int bit = position_; bit < end_; ++bit) {
    if (AVCReadUintBits(data_, bit, 1))
      return Holds(2 * uint64_t{bit - position_} + 1);
  }
  return false;
}

bool AVCBitCursor::ReadValue(unsigned int bitCount, uint64_t* value) {
  if (!Holds(bitCount))
    return false;
  *value = AVCReadUintBits(data_, position_, bitCount);
  position_ += bitCount;
  return true;
}

bool AVCBitCursor::ReadExpGolombValue(uint64_t* value) {
  if (!HoldsExpGolomb())
    return false;
  unsigned int bitsUsed;
  *value = AVCReadExpGolomb(data_, position_, &bitsUsed);
  position_ += bitsUsed;
  return true;
}

bool AVCBitCursor::ReadSignedExpGolomb(int32_t* field) {
  if (!HoldsExpGolomb())
    return false;
  unsigned int bitsUsed;
  *field = static_cast<int32_t>(
      AVCReadSignedExpGolomb(data_, position_, &bitsUsed));
  position_ += bitsUsed;
  return true;
}
