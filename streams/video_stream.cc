// The video reader's construction and destruction. Writes formatDescriptor, language,
// country, trackType, imageProperties and duration_; blocks and auxiliaryTracks on the
// way out.
#include "streams/video_stream.h"

#include <cstring>
#include <numeric>

#include <boost/thread/locks.hpp>

#include "codec/asp_aspect_ratio.h"
#include "plugin/kvl/control_interface.h"
#include "plugin/kvl/logger.h"
#include "source/video_codecs.h"

namespace KVL {
namespace {

constexpr char kMpeg4Part2CodecId[] = "V_MPEG4/ISO/ASP";

struct Ratio {
  uint32_t x = 0;
  uint32_t y = 0;
};

Ratio Reduced(unsigned long long x, unsigned long long y) {
  const unsigned long long divisor = std::gcd(x, y);
  if (divisor == 0) return {};
  x /= divisor;
  y /= divisor;
  if (x > UINT32_MAX || y > UINT32_MAX) return {};
  return {static_cast<uint32_t>(x), static_cast<uint32_t>(y)};
}

// Unsigned 32-bit size from the parser's signed one; 0 where it doesn't fit.
uint32_t Dimension(long long size) {
  return size > 0 && size <= UINT32_MAX ? static_cast<uint32_t>(size) : 0;
}

// The pixel aspect ratio. The parser reports the pixel size as the display
// size when the file states none, so only a display size that differs from
// the pixel size states a ratio; else an MPEG-4 part 2 track's Video Object
// Layer header (its codec private data) may; else zero: nothing is known.
Ratio PixelAspectRatio(const mkvparser::VideoTrack& track) {
  const uint32_t width = Dimension(track.GetWidth());
  const uint32_t height = Dimension(track.GetHeight());
  const uint32_t displayWidth = Dimension(track.GetDisplayWidth());
  const uint32_t displayHeight = Dimension(track.GetDisplayHeight());
  if (width && height && displayWidth && displayHeight &&
      (displayWidth != width || displayHeight != height)) {
    return Reduced(static_cast<unsigned long long>(displayWidth) * height,
                   static_cast<unsigned long long>(displayHeight) * width);
  }
  const char* codecId = track.GetCodecId();
  if (!codecId || std::strcmp(codecId, kMpeg4Part2CodecId) != 0) return {};
  size_t size = 0;
  const unsigned char* header = track.GetCodecPrivate(size);
  Ratio ratio;
  if (!header || size > UINT32_MAX ||
      !getPARFromASPBitstream(const_cast<unsigned char*>(header),
                              static_cast<unsigned int>(size), &ratio.x, &ratio.y) ||
      ratio.x == 0 || ratio.y == 0) {
    return {};
  }
  return ratio;
}

}  // namespace

MKVSource::VideoStream::VideoStream(TitleInternal* title, unsigned int trackIndex)
    : MKVStream(kVideoBlocks, title, trackIndex, &imageProperties) {
  boost::unique_lock<boost::recursive_mutex> lock(title->mutex);
  country = "us";
  language = "en";
  trackType = 0;
  formatDescriptor.mediaType = kMediaVideo;
  // Whatever kind of track sits at this position, its codec id is compared
  // (and an unknown one logged); only a video track has a picture to describe.
  if (const mkvparser::Track* found = track()) {
    storeCode(found->GetCodecId());
    if (found->GetType() == mkvparser::Track::kVideo)
      describe(*static_cast<const mkvparser::VideoTrack*>(found));
  }
  storeDuration();
}

void MKVSource::VideoStream::storeCode(const char* codecId) {
  if (const VideoCodec* codec = FindVideoCodec(codecId)) {
    std::strncpy(formatDescriptor.code, codec->streamCode, sizeof(formatDescriptor.code) - 1);
  } else if (codecId) {
    Logger::instance().log("MKVSource", "VideoStream", 1726, "Unknown CodecID:%s\n", codecId);
  }
}

void MKVSource::VideoStream::describe(const mkvparser::VideoTrack& track) {
  imageProperties.width = static_cast<uint32_t>(track.GetWidth());
  imageProperties.height = static_cast<uint32_t>(track.GetHeight());
  const Ratio ratio = PixelAspectRatio(track);
  if (ratio.x != 0 && ratio.y != 0) {
    imageProperties.aspectX = ratio.x;
    imageProperties.aspectY = ratio.y;
  }
}

MKVSource::VideoStream::~VideoStream() {
  boost::unique_lock<boost::recursive_mutex> lock(title->mutex);
  blocks.reset();
  for (const auto& auxiliary : auxiliaryTracks)
    title->source->control->removeStream(auxiliary.first);
  auxiliaryTracks.clear();
}

int MKVSource::VideoStream::openStream(MediaTimerInterface*) { return MKVStream::openStream(0, 0); }

}  // namespace KVL
