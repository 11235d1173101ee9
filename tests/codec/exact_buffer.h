#ifndef TESTS_CODEC_EXACT_BUFFER_H_
#define TESTS_CODEC_EXACT_BUFFER_H_

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

// A heap copy exactly `length` bytes long, so that the address sanitizer
// catches any read behind the end.
inline std::unique_ptr<unsigned char[]> ExactCopy(const std::vector<unsigned char>& bytes,
                                                  size_t length) {
  auto copy = std::make_unique<unsigned char[]>(length);
  std::copy(bytes.begin(), bytes.begin() + length, copy.get());
  return copy;
}

// Runs `check` on an exact copy of each prefix of `bytes`, empty and whole included.
inline void ForEachPrefix(const std::vector<unsigned char>& bytes,
                          const std::function<void(unsigned char*, unsigned int)>& check) {
  for (size_t length = 0; length <= bytes.size(); ++length)
    check(ExactCopy(bytes, length).get(), static_cast<unsigned int>(length));
}

#endif  // TESTS_CODEC_EXACT_BUFFER_H_
