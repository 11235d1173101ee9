#ifndef MKVSOURCE_TESTS_CODEC_TEST_BYTES_H_
#define MKVSOURCE_TESTS_CODEC_TEST_BYTES_H_

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

using Bytes = std::vector<unsigned char>;

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
  const Bytes& bytes() const { return bytes_; }

 private:
  Bytes bytes_;
  unsigned int count_ = 0;
};

// Runs `check` on each prefix of `bytes`, empty and whole included, each in a heap copy of
// exactly its length, so that the address sanitizer catches any read behind the end.
inline void ForEachPrefix(const Bytes& bytes,
                          const std::function<void(unsigned char*, unsigned int)>& check) {
  for (size_t length = 0; length <= bytes.size(); ++length) {
    auto copy = std::make_unique<unsigned char[]>(length);
    std::copy(bytes.begin(), bytes.begin() + length, copy.get());
    check(copy.get(), static_cast<unsigned int>(length));
  }
}

#endif  // MKVSOURCE_TESTS_CODEC_TEST_BYTES_H_
