#ifndef PLUGIN_KVL_CONTROL_INTERFACE_H_
#define PLUGIN_KVL_CONTROL_INTERFACE_H_

#include <cstdint>

#include "plugin/kvl/export.h"
#include "plugin/kvl/text.h"

namespace KVL {

class StreamInterface;

// Told when a stream first finds its data not ready.
class KVL_API DataNotReadySink {
 public:
  virtual ~DataNotReadySink();
  virtual int notify() = 0;
};

// The two-word value that goes with seekToTime(). The plug-in sets `kind`
// to 1; `extra` is the engine's.
struct SeekRequest {
  uint32_t kind;
  uint32_t extra;
};

// Playback states in which a stream may report its data as not ready.
enum PlaybackState : int { kStateWaitingForData = 4002, kStateBuffering = 4003 };

// The engine's callback object, delivered by init(). The plug-in never owns
// it. Times are in units of 10 microseconds.
class KVL_API ControlInterface {
 public:
  virtual ~ControlInterface();
  virtual unsigned long long createUID() = 0;
  virtual vorq_string<char> getDefaultAudioLanguage() = 0;
  virtual vorq_string<char> getDefaultSubtitleLanguage() = 0;
  virtual int32_t getCurrentTime(int32_t reserved) = 0;
  virtual int getPlaybackState() = 0;
  virtual DataNotReadySink* getDataNotReadySink() = 0;
  virtual int reportDataNotReady(unsigned long long streamUID) = 0;
  virtual StreamInterface* getStream(unsigned long long streamUID) = 0;
  virtual int requestOpenTitle(unsigned long long titleUID) = 0;
  virtual int titleClosed(unsigned long long titleUID) = 0;
  virtual int seekToTime(uint32_t time, SeekRequest request) = 0;
  // Takes the stream object over.
  virtual int addStream(StreamInterface* stream) = 0;
  // Drops the stream; the engine destroys the object.
  virtual int removeStream(unsigned long long streamUID) = 0;
  virtual int enableStream(unsigned long long streamUID, int enable) = 0;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_CONTROL_INTERFACE_H_
