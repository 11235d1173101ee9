#ifndef RUNTIME_CONTAINERS_VORQ_STRING_H_
#define RUNTIME_CONTAINERS_VORQ_STRING_H_

#include <algorithm>
#include <string>

#include "runtime/containers/standard_allocator.h"

namespace KVL {

// The engine's text: `char` for names, `unsigned char` for UTF-8. A string
// owns its buffer (length + 1 elements, terminated) and frees it through the
// allocator it was built with; null data means "never held text".
template <typename T, typename Alloc = StandardAllocator<T>>
class vorq_string {
 public:
  vorq_string(const T* text = nullptr, Alloc* allocator = getDefaultAllocator())
      : allocator_(allocator) {
    copyFrom(text);
  }
  vorq_string(const vorq_string& other, Alloc* allocator)
      : vorq_string(other.data_, allocator) {}
  // A by-value copy always takes the default allocator.
  vorq_string(const vorq_string& other) : vorq_string(other.data_) {}
  ~vorq_string() { release(); }

  static Alloc* getDefaultAllocator() {
    static Alloc allocator;
    return &allocator;
  }

  const T* data() const { return data_; }
  unsigned int length() const { return length_; }
  Alloc* allocator() const { return allocator_; }

  std::basic_string<T> toStlString() const {
    return data_ ? std::basic_string<T>(data_, length_) : std::basic_string<T>();
  }

  // Equality, not a three-way result. A null text counts as empty.
  bool compare(const T* text) const {
    return toStlString() == (text ? std::basic_string<T>(text) : std::basic_string<T>());
  }
  bool operator==(vorq_string other) const { return compare(other.data_); }

  // Deliberately descending: `a < b` holds when b precedes a in unsigned byte
  // order, so maps keyed by these strings run from the greatest key down.
  bool operator<(vorq_string other) const {
    const std::basic_string<T> self = toStlString();
    const std::basic_string<T> rhs = other.toStlString();
    const size_t common = std::min(self.size(), rhs.size());
    for (size_t i = 0; i < common; ++i) {
      const auto a = static_cast<unsigned char>(self[i]);
      const auto b = static_cast<unsigned char>(rhs[i]);
      if (a != b) return b < a;
    }
    return rhs.size() < self.size();
  }

  // Keeps this string's allocator; drops the old text before copying.
  void assign(vorq_string other) {
    release();
    copyFrom(other.data_);
  }
  void operator=(vorq_string other) {
    vorq_string copy(other.data_);
    assign(copy);
  }

 private:
  void copyFrom(const T* text) {
    if (!text) return;
    const std::basic_string<T> source(text);
    data_ = allocator_->New(source.size() + 1);
    std::copy(source.c_str(), source.c_str() + source.size() + 1, data_);
    length_ = static_cast<unsigned int>(source.size());
  }
  void release() {
    if (data_) allocator_->Delete(data_);
    data_ = nullptr;
    length_ = 0;
  }

  T* data_ = nullptr;
  unsigned int length_ = 0;
  Alloc* allocator_;
};

}  // namespace KVL

#endif  // RUNTIME_CONTAINERS_VORQ_STRING_H_
