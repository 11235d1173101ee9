#ifndef TESTS_CODEC_EXACT_BUFFER_H_
#define TESTS_CODEC_EXACT_BUFFER_H_

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

// Runs `check` on each prefix of `bytes`, empty and whole included, each in a heap copy of
// exactly its length, so that the address sanitizer catches any read behind the end.
inline void ForEachPrefix(const std::vector<unsigned char>& bytes,
                          const std::function<void(unsigned char*, unsigned int)>& check) {
  for (size_t length = 0; length <= bytes.size(); ++length) {
    auto copy = std::make_unique<unsigned char[]>(length);
    std::copy(bytes.begin(), bytes.begin() + length, copy.get());
    check(copy.get(), static_cast<unsigned int>(length));
  }
}

#endif  // TESTS_CODEC_EXACT_BUFFER_H_
