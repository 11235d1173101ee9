#include "host/plot/sync_chunks.h"

namespace kvlhost {
namespace {

// Where the records keep lengthSizeMinusOne in their low two bits:
// AVCDecoderConfigurationRecord and HEVCDecoderConfigurationRecord.
constexpr size_t kAvcLengthByte = 4;
constexpr size_t kHevcLengthByte = 21;

size_t LengthSize(const std::vector<uint8_t>& record, size_t at) {
  return record.size() > at ? (record[at] & 3u) + 1 : 4;
}

}  // namespace

SyncChunks::SyncChunks(const StreamReport& stream, const std::vector<uint8_t>& codecPrivate) {
  if (stream.kind == "audio") {
    rule_ = Rule::kEveryChunk;
  } else if (stream.format == "H264") {
    rule_ = Rule::kAvcIdr;
    lengthSize_ = LengthSize(codecPrivate, kAvcLengthByte);
  } else if (stream.format == "H265") {
    rule_ = Rule::kHevcIrap;
    lengthSize_ = LengthSize(codecPrivate, kHevcLengthByte);
  }
}

bool SyncChunks::IsSync(const uint8_t* payload, size_t size) const {
  switch (rule_) {
    case Rule::kEveryChunk: return true;
    case Rule::kUnknown: return false;
    default: return StartsWithSyncPicture(payload, size);
  }
}

// A chunk cut short or with a length past its end is no sync chunk.
bool SyncChunks::StartsWithSyncPicture(const uint8_t* payload, size_t size) const {
  size_t at = 0;
  while (size - at > lengthSize_) {
    size_t length = 0;
    for (size_t i = 0; i < lengthSize_; ++i) length = length << 8 | payload[at + i];
    at += lengthSize_;
    if (length == 0 || length > size - at) return false;
    const uint8_t header = payload[at];
    if (rule_ == Rule::kAvcIdr) {
      const unsigned int type = header & 0x1fu;
      if (type >= 1 && type <= 5) return type == 5;
    } else {
      const unsigned int type = (header >> 1) & 0x3fu;
      if (type < 32) return type >= 16 && type <= 23;
    }
    at += length;
  }
  return false;
}

}  // namespace kvlhost
