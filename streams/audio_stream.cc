// The audio reader's construction and scan. Writes formatDescriptor, language, country,
// name, trackType, audioProperties, endOfStream and duration_.
#include "streams/audio_stream.h"

#include <cmath>
#include <cstring>

#include <boost/thread/locks.hpp>

namespace KVL {
namespace {

constexpr uint32_t kUnknownAudioTag = 0xFFFFFFFF;

struct AudioCodec {
  const char* codecId;
  uint32_t tag;  // the WAVE format tag
};

constexpr AudioCodec kAudioCodecs[] = {
    {"A_MPEG/L3", 0x55},
    {"A_AAC", 0xFF},
};

uint32_t AudioTag(const char* codecId) {
  if (!codecId) return kUnknownAudioTag;
  for (const AudioCodec& codec : kAudioCodecs) {
    if (std::strcmp(codec.codecId, codecId) == 0) return codec.tag;
  }
  return kUnknownAudioTag;
}

// Cut to a whole number and held in 0 to 4294967295.
uint32_t WholeSampleRate(double rate) {
  if (!(rate > 0)) return 0;
  if (rate >= 4294967295.0) return 4294967295u;
  return static_cast<uint32_t>(std::trunc(rate));
}

}  // namespace

MKVSource::AudioStream::AudioStream(TitleInternal* title, unsigned int trackIndex)
    : MKVStream(kAudioBlocks, title, trackIndex, &audioProperties) {
  boost::unique_lock<boost::recursive_mutex> lock(title->mutex);
  endOfStream = 0;
  formatDescriptor.mediaType = kMediaAudio;
  const uint32_t unknown = kUnknownAudioTag;
  std::memcpy(formatDescriptor.code, &unknown, sizeof(unknown));
  language = "en";
  country = "us";
  // Name, type and tag come from whatever track sits at this position; only
  // an audio track has a sample rate and channels, else they stay 0.
  if (const mkvparser::Track* found = track()) {
    describeTrack(*found);
    if (found->GetType() == mkvparser::Track::kAudio)
      describeAudio(*static_cast<const mkvparser::AudioTrack*>(found));
  }
  storeDuration();
}

void MKVSource::AudioStream::describeTrack(const mkvparser::Track& track) {
  if (const char* trackName = track.GetNameAsUTF8())
    name.assign(reinterpret_cast<const unsigned char*>(trackName));
  trackType = static_cast<uint32_t>(track.GetType());
  const uint32_t tag = AudioTag(track.GetCodecId());
  std::memcpy(formatDescriptor.code, &tag, sizeof(tag));
}

void MKVSource::AudioStream::describeAudio(const mkvparser::AudioTrack& track) {
  audioProperties.channels = static_cast<uint32_t>(track.GetChannels());
  audioProperties.sampleRate = WholeSampleRate(track.GetSamplingRate());
}

int MKVSource::AudioStream::openStream(MediaTimerInterface*) { return MKVStream::openStream(0, 0); }

int MKVSource::AudioStream::scanStream(long long time, long long* result) {
  if (result) *result = time;
  return 0;
}

}  // namespace KVL
