#ifndef STREAMS_VIDEO_STREAM_H_
#define STREAMS_VIDEO_STREAM_H_

#include "plugin/kvl/properties.h"
#include "streams/mkv_stream.h"

namespace KVL {

// Reads one video track: format code ("H264", "H265", empty for others),
// picture size, pixel aspect ratio where the file tells one.
class MKVSource::VideoStream : public MKVSource::MKVStream {
 public:
  // `trackIndex` is a position in the segment's whole track list. A position
  // that holds no video track gives a reader with empty properties.
  VideoStream(TitleInternal* title, unsigned int trackIndex);
  ~VideoStream() override;

  unsigned int streamType() const override { return kStreamVideo; }
  int openStream(MediaTimerInterface* timer) override;
  // Lands on the first key block of the cluster where the parser's seek
  // found one, and reports that cluster's timecode. `exact` plays no part.
  int seekStream(unsigned int time, unsigned int* actualTime, bool exact) override;

 private:
  // The format code of a known id; an unknown, non-null id is logged.
  void storeCode(const char* codecId);
  void describe(const mkvparser::VideoTrack& track);

  ImageProperties imageProperties;
};

}  // namespace KVL

#endif  // STREAMS_VIDEO_STREAM_H_
