#ifndef READER_MKV_READER_H_
#define READER_MKV_READER_H_

#include <cstdio>
#include <memory>

#include "reader/mkv_reader_interface.h"

namespace KVL {

// Reads a local file for the parser. Positions are 64-bit throughout.
//
// The parser peeks in many small reads, forward and backward; each would be
// a seek and a read system call. Small reads are therefore served from one
// window of the file, refilled with a single read when a request falls
// outside it, so a whole file costs about one system call per window. A
// request far past the window, where the parser skips from one cluster head
// to the next, fetches only a few hundred bytes. Large reads (frames) go
// straight into the caller's buffer.
class MkvReader : public IMkvReader {
 public:
  MkvReader();
  ~MkvReader() override;
  MkvReader(const MkvReader&) = delete;
  MkvReader& operator=(const MkvReader&) = delete;

  int Open(const char* fileName) override;
  void Close() override;
  // 0 when all `length` bytes are in `buffer`, -1 otherwise; a read that
  // starts inside the file and runs past its end leaves what was there.
  int Read(long long position, long length, unsigned char* buffer) override;
  // Both values are the file length: a local file is wholly available.
  int Length(long long* total, long long* available) override;

  static constexpr long kWindowBytes = 256 * 1024;

 private:
  long ReadAt(long long position, long length, unsigned char* buffer);
  bool FillWindow(long long position, long length);

  long long length_ = 0;
  FILE* file_ = nullptr;
  std::unique_ptr<unsigned char[]> window_;
  long long windowStart_ = 0;
  long windowBytes_ = 0;
};

}  // namespace KVL

#endif  // READER_MKV_READER_H_
