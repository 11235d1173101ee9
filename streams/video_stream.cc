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

// The pixel aspect ratio: from the display size when the file states one,
// else, for MPEG-4 part 2, from the Video Object Layer header that such a
// track carries as its codec private data. Zero where neither tells.
Ratio PixelAspectRatio(const mkvparser::VideoTrack& track) {
  const long long width = track.GetWidth();
  const long long height = track.GetHeight();
  const long long displayWidth = track.GetDisplayWidth();
  const long long displayHeight = track.GetDisplayHeight();
  if (width > 0 && height > 0 && displayWidth > 0 && displayHeight > 0 &&
      width <= UINT32_MAX && height <= UINT32_MAX && displayWidth <= UINT32_MAX &&
      displayHeight <= UINT32_MAX) {
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
  const mkvparser::Track* found = track();
  if (found && found->GetType() == mkvparser::Track::kVideo)
    describe(*static_cast<const mkvparser::VideoTrack*>(found));
  storeDuration();
}

void MKVSource::VideoStream::describe(const mkvparser::VideoTrack& track) {
  const char* codecId = track.GetCodecId();
  if (const VideoCodec* codec = FindVideoCodec(codecId)) {
    std::strncpy(formatDescriptor.code, codec->streamCode, sizeof(formatDescriptor.code) - 1);
  } else if (codecId) {
    Logger::instance().log("MKVSource", "VideoStream", 1726, "Unknown CodecID:%s\n", codecId);
  }
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
  for (const auto& auxiliary : auxiliaryTracks) title->source->control->removeStream(auxiliary.first);
  auxiliaryTracks.clear();
}

int MKVSource::VideoStream::openStream(MediaTimerInterface*) { return MKVStream::openStream(0, 0); }

}  // namespace KVL
