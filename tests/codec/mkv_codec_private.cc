#include "tests/codec/mkv_codec_private.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>

#include "mkvparser/mkvparser.h"

namespace {

using Bytes = std::vector<unsigned char>;

class BufferReader : public mkvparser::IMkvReader {
 public:
  explicit BufferReader(const Bytes& file) : file_(file) {}
  int Read(long long pos, long len, unsigned char* buf) override {
    if (pos < 0 || len < 0 ||
        static_cast<unsigned long long>(pos) + len > file_.size())
      return -1;
    std::memcpy(buf, file_.data() + pos, len);
    return 0;
  }
  int Length(long long* total, long long* available) override {
    *total = *available = static_cast<long long>(file_.size());
    return 0;
  }

 private:
  const Bytes& file_;
};

}  // namespace

std::string TestDataPath(const std::string& name) {
  return std::string(CODEC_TEST_DATA_DIR) + "/" + name;
}

Bytes FirstTrackCodecPrivate(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const Bytes file{std::istreambuf_iterator<char>(in), {}};
  BufferReader reader(file);
  long long pos = 0;
  mkvparser::EBMLHeader header;
  mkvparser::Segment* segment = nullptr;
  if (header.Parse(&reader, pos) < 0 ||
      mkvparser::Segment::CreateInstance(&reader, pos, segment) != 0)
    return {};
  std::unique_ptr<mkvparser::Segment> owner(segment);
  if (segment->Load() < 0 || !segment->GetTracks())
    return {};
  const mkvparser::Track* track = segment->GetTracks()->GetTrackByIndex(0);
  size_t size = 0;
  const unsigned char* data = track ? track->GetCodecPrivate(size) : nullptr;
  return data ? Bytes(data, data + size) : Bytes();
}
