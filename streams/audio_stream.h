#ifndef STREAMS_AUDIO_STREAM_H_
#define STREAMS_AUDIO_STREAM_H_

#include "plugin/kvl/properties.h"
#include "streams/mkv_stream.h"

namespace KVL {

// Reads one audio track: a 32-bit format tag (0x55 MP3, 0xFF AAC, else -1),
// sample rate, channels and name.
class MKVSource::AudioStream : public MKVSource::MKVStream {
 public:
  // `trackIndex` is a position in the segment's whole track list. A position
  // that holds no audio track gives a reader with empty properties.
  AudioStream(TitleInternal* title, unsigned int trackIndex);

  unsigned int streamType() const override { return kStreamAudio; }
  int openStream(MediaTimerInterface* timer) override;
  // Takes the entry that the parser's seek found and reports the requested
  // time: `time`, or `time` + 1 when not exact.
  int seekStream(unsigned int time, unsigned int* actualTime, bool exact) override;
  // Reports `time` as it is.
  int scanStream(long long time, long long* result) override;

 private:
  void describeTrack(const mkvparser::Track& track);
  void describeAudio(const mkvparser::AudioTrack& track);

  AudioProperties audioProperties;
};

}  // namespace KVL

#endif  // STREAMS_AUDIO_STREAM_H_
