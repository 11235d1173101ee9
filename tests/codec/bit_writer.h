#ifndef TESTS_CODEC_BIT_WRITER_H_
#define TESTS_CODEC_BIT_WRITER_H_

#include <cstdint>
#include <vector>

// Bit strings, most significant bit first, with H.264's Exp-Golomb codes; 0 bits pad the end.
class BitWriter {
 public:
  BitWriter& Bits(uint64_t value, unsigned int count) {
    for (unsigned int i = count; i-- > 0; ++count_) {
      if (count_ % 8 == 0) bytes_.push_back(0);
      bytes_.back() |= ((value >> i) & 1) << (7 - count_ % 8);
    }
    return *this;
  }
  BitWriter& UE(uint64_t value) {
    unsigned int length = 0;
    while ((value + 1) >> (length + 1)) ++length;
    return Bits(0, length).Bits(value + 1, length + 1);
  }
  BitWriter& SE(int64_t value) { return UE(value > 0 ? 2 * value - 1 : -2 * value); }
  BitWriter& Byte(unsigned char value) { return Bits(value, 8); }
  const std::vector<unsigned char>& bytes() const { return bytes_; }

 private:
  std::vector<unsigned char> bytes_;
  unsigned int count_ = 0;
};

#endif  // TESTS_CODEC_BIT_WRITER_H_
