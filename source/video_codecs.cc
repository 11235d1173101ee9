#include "source/video_codecs.h"

#include <cstring>

namespace KVL {
namespace {

constexpr VideoCodec kVideoCodecs[] = {
    {"V_MPEG4/ISO/AVC", "", "H264"},
    {"V_MPEGH/ISO/HEVC", "H265", "H265"},
    {"V_MPEG4/ISO/HEVC", "H265", "H265"},
};

}  // namespace

const VideoCodec* FindVideoCodec(const char* codecId) {
  if (!codecId) return nullptr;
  for (const VideoCodec& codec : kVideoCodecs) {
    if (std::strcmp(codec.codecId, codecId) == 0) return &codec;
  }
  return nullptr;
}

}  // namespace KVL
