#ifndef TESTS_CODEC_BIT_WRITER_H_
#define TESTS_CODEC_BIT_WRITER_H_

#include <cstdint>
#include <vector>

// Builds bit strings for the codec tests: fixed-width values most
// significant bit first, and the Exp-Golomb codes of H.264.
class BitWriter {
 public:
  BitWriter& Bits(uint64_t value, unsigned int count) {
    for (unsigned int i = count; i-- > 0;)
      Bit((value >> i) & 1);
    return *this;
  }
  BitWriter& UE(uint64_t value) {
    unsigned int length = 0;
    while ((value + 1) >> (length + 1))
      ++length;
    return Bits(0, length).Bits(value + 1, length + 1);
  }
  BitWriter& SE(int64_t value) {
    return UE(value > 0 ? 2 * value - 1 : -2 * value);
  }
  BitWriter& Byte(unsigned char value) { return Bits(value, 8); }
  // The bits so far, the last byte filled with 0 bits.
  const std::vector<unsigned char>& bytes() const { return bytes_; }

 private:
  void Bit(unsigned int bit) {
    if (count_ % 8 == 0)
      bytes_.push_back(0);
    bytes_.back() |= bit << (7 - count_ % 8);
    ++count_;
  }

  std::vector<unsigned char> bytes_;
  unsigned int count_ = 0;
};

#endif  // TESTS_CODEC_BIT_WRITER_H_
