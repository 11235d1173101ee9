#ifndef PLUGIN_KVL_STREAM_INTERFACE_H_
#define PLUGIN_KVL_STREAM_INTERFACE_H_

#include <cstdint>
#include <map>

#include "plugin/kvl/export.h"
#include "plugin/kvl/format_descriptor.h"
#include "plugin/kvl/media_buffer.h"
#include "plugin/kvl/properties.h"
#include "plugin/kvl/result_codes.h"
#include "plugin/kvl/text.h"

namespace KVL {

class MediaTimerInterface;

enum StreamReadMode : int { kReadSequential = 1, kReadOnePerSeek = 2 };
enum StreamType : unsigned int { kStreamVideo = 272, kStreamAudio = 288 };

constexpr int kReadSpeedNormal = 1000;

// Base of every track reader. Times are timecode ticks.
class KVL_API StreamInterface {
 public:
  StreamInterface(unsigned long long containerUID, unsigned long long streamUID,
                  StreamInterface* primary);
  virtual ~StreamInterface();

  unsigned long long streamUID() const { return uid; }
  unsigned long long containerUID() const { return containerUID_; }

  virtual uint32_t duration();
  virtual int framerate(unsigned int* numerator, unsigned int* denominator);
  virtual int info(vorq_string<unsigned char>* name, vorq_string<char>* language,
                   vorq_string<char>* country, unsigned int* trackType);
  virtual FormatDescriptor* format();
  virtual Properties* properties();
  virtual unsigned int streamType() const = 0;
  virtual StreamInterface* getPrimaryTrack();
  virtual StreamInterface* getAuxiliaryTracks(unsigned int index);
  virtual int openStream(MediaTimerInterface* timer);
  virtual int resetStream();
  virtual int getSyncPoint(int direction, unsigned int time, unsigned int* syncPoint);
  virtual int seekStream(unsigned int time, unsigned int* actualTime, bool exact) = 0;
  virtual int closeStream();
  virtual int readStream(MediaChunk** chunk);
  virtual uint32_t getLastChunkTime();
  virtual bool isEOS();
  virtual bool setReadSpeed(int speed);
  virtual int readSpeed();
  virtual bool setReadMode(StreamReadMode mode);
  virtual StreamReadMode readMode();
  virtual void setReadInterval(int interval);
  virtual int getReadInterval();
  virtual bool getCodecData(List<TypedMediaBuffer*>* list);
  virtual int scanStream(long long time, long long* result);

 protected:
  unsigned long long uid;
  unsigned char endOfStream = 0;
  int32_t readSpeed_ = kReadSpeedNormal;
  StreamReadMode readMode_ = kReadSequential;
  uint32_t lastChunkTime = 0;
  std::map<unsigned long long, StreamInterface*> auxiliaryTracks;

 private:
  unsigned long long containerUID_;
  StreamInterface* primary_;
  int readInterval_ = 0;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_STREAM_INTERFACE_H_
