#include "plugin/kvl/stream_interface.h"

namespace KVL {

StreamInterface::StreamInterface(unsigned long long containerUID,
                                 unsigned long long streamUID, StreamInterface* primary)
    : uid(streamUID), containerUID_(containerUID), primary_(primary) {}

StreamInterface::~StreamInterface() = default;

uint32_t StreamInterface::duration() { return 0; }
int StreamInterface::framerate(unsigned int*, unsigned int*) { return 0; }
int StreamInterface::info(vorq_string<unsigned char>*, vorq_string<char>*,
                          vorq_string<char>*, unsigned int*) {
  return 1;
}
FormatDescriptor* StreamInterface::format() { return nullptr; }
Properties* StreamInterface::properties() { return nullptr; }
StreamInterface* StreamInterface::getPrimaryTrack() { return primary_; }
StreamInterface* StreamInterface::getAuxiliaryTracks(unsigned int) { return nullptr; }
int StreamInterface::openStream(MediaTimerInterface*) { return 0; }
int StreamInterface::resetStream() { return 0; }
int StreamInterface::getSyncPoint(int, unsigned int, unsigned int*) { return 0; }
int StreamInterface::closeStream() { return 0; }
int StreamInterface::readStream(MediaChunk** chunk) {
  if (chunk) *chunk = nullptr;
  return 0;
}
uint32_t StreamInterface::getLastChunkTime() { return lastChunkTime; }
bool StreamInterface::isEOS() { return endOfStream != 0; }
bool StreamInterface::setReadSpeed(int speed) {
  readSpeed_ = speed;
  return true;
}
int StreamInterface::readSpeed() { return readSpeed_; }
bool StreamInterface::setReadMode(StreamReadMode mode) {
  readMode_ = mode;
  return true;
}
StreamReadMode StreamInterface::readMode() { return readMode_; }
void StreamInterface::setReadInterval(int interval) { readInterval_ = interval; }
int StreamInterface::getReadInterval() { return readInterval_; }
bool StreamInterface::getCodecData(List<TypedMediaBuffer*>*) { return false; }
int StreamInterface::scanStream(long long, long long*) { return 0; }

}  // namespace KVL
