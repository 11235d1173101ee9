// A file held in memory as the source's file, with the file reader's
// answers; it doesn't own the bytes. It counts its reads into `*reads` if given.
#ifndef MKVSOURCE_TESTS_SUPPORT_MEMORY_READER_H_
#define MKVSOURCE_TESTS_SUPPORT_MEMORY_READER_H_

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "reader/mkv_reader_interface.h"

namespace mkvtest {

class MemoryReader : public KVL::IMkvReader {
 public:
  MemoryReader(const uint8_t* data, size_t size, size_t* reads = nullptr)
      : data_(data), size_(static_cast<long long>(size)), reads_(reads) {}

  int Open(const char*) override { return open_ ? -1 : (open_ = true, 0); }
  void Close() override { open_ = false; }
  int Read(long long position, long length, unsigned char* buffer) override {
    if (reads_) ++*reads_;
    if (!open_ || position < 0 || length < 0) return -1;
    if (length == 0) return 0;
    if (position >= size_) return -1;
    const long long stored = std::min<long long>(length, size_ - position);
    std::memcpy(buffer, data_ + position, static_cast<size_t>(stored));
    return stored == length ? 0 : -1;
  }
  int Length(long long* total, long long* available) override {
    if (!open_) return -1;
    if (total) *total = size_;
    if (available) *available = size_;
    return 0;
  }

 private:
  const uint8_t* data_;
  long long size_;
  size_t* reads_;
  bool open_ = false;
};

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_MEMORY_READER_H_
