// mkvparser over bytes in memory, for tests that read a committed file whole.
// Only targets that link `webm` may include this header.
#ifndef MKVSOURCE_TESTS_SUPPORT_LOADED_SEGMENT_H_
#define MKVSOURCE_TESTS_SUPPORT_LOADED_SEGMENT_H_

#include <cstring>
#include <memory>
#include <utility>

#include "mkvparser/mkvparser.h"
#include "tests/support/temp_file.h"

namespace mkvtest {

class BytesReader : public mkvparser::IMkvReader {
 public:
  explicit BytesReader(Bytes bytes) : bytes_(std::move(bytes)) {}
  ~BytesReader() override = default;

  int Read(long long pos, long len, unsigned char* buf) override {
    const long long size = static_cast<long long>(bytes_.size());
    if (pos < 0 || len < 0 || pos > size || len > size - pos) return -1;
    if (len > 0) std::memcpy(buf, bytes_.data() + pos, len);
    return 0;
  }
  int Length(long long* total, long long* available) override {
    if (total) *total = static_cast<long long>(bytes_.size());
    if (available) *available = static_cast<long long>(bytes_.size());
    return 0;
  }

 private:
  Bytes bytes_;
};

// The EBML header and a fully loaded segment of `bytes`. `status` is 0, or
// the first failure of EBMLHeader::Parse, Segment::CreateInstance or
// Segment::Load; `segment` is null only if it couldn't be made.
struct LoadedSegment {
  explicit LoadedSegment(Bytes bytes) : reader(std::move(bytes)) {
    long long pos = 0;
    status = header.Parse(&reader, pos);
    if (status != 0) return;
    mkvparser::Segment* made = nullptr;
    status = mkvparser::Segment::CreateInstance(&reader, pos, made);
    segment.reset(made);
    if (status != 0) return;
    status = segment->Load();
  }

  BytesReader reader;
  mkvparser::EBMLHeader header;
  std::unique_ptr<mkvparser::Segment> segment;
  long long status = 0;
};

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_LOADED_SEGMENT_H_
