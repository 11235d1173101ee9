// The reader's core: construction, open, close, the accessors, the speed and mode. Writes
// every member at construction; later source, codecData, defaultDuration, endOfStream,
// walkState, readSpeed_, readMode_, duration_, and blocks on the way out.
#include "streams/mkv_stream.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <boost/thread/locks.hpp>

#include "plugin/kvl/control_interface.h"
#include "plugin/kvl/result_codes.h"
#include "streams/media_chunk_allocator.h"
#include "streams/tick_time.h"

namespace KVL {

using StreamLock = boost::unique_lock<boost::recursive_mutex>;

MKVSource::MKVStream::MKVStream(MKVBlockType_t type, TitleInternal* title,
                                unsigned int trackIndex, Properties* properties)
    : StreamInterface(title->source->containerUID(), title->source->control->createUID(),
                      nullptr),
      blockType(type),
      trackIndex(trackIndex),
      allocator(new MediaChunkAllocator),
      title(title),
      properties_(properties) {}

MKVSource::MKVStream::~MKVStream() {
  // Only the video reader's destructor takes the title's lock, and lets its
  // cluster go under it; the audio reader's doesn't, so its pin goes by a
  // single atomic step on the cluster's heap record, which the cache drops
  // later under the lock. The cache makes and erases records only under it.
  blocks.releaseWithoutLock();
  // Codec data nobody took would otherwise be lost with the stream.
  releaseCodecData();
  delete allocator;
}

uint32_t MKVSource::MKVStream::duration() { return duration_; }
FormatDescriptor* MKVSource::MKVStream::format() { return &formatDescriptor; }
Properties* MKVSource::MKVStream::properties() { return properties_; }

int MKVSource::MKVStream::info(vorq_string<unsigned char>* name, vorq_string<char>* language,
                               vorq_string<char>* country, unsigned int* trackType) {
  if (name) *name = vorq_string<unsigned char>(this->name.c_str());
  if (language) *language = vorq_string<char>(this->language.c_str());
  if (country) *country = vorq_string<char>(this->country.c_str());
  if (trackType) *trackType = this->trackType;
  return 1;
}

const mkvparser::Track* MKVSource::MKVStream::track() const {
  const mkvparser::Tracks* tracks = title->source->tracks;
  return tracks ? tracks->GetTrackByIndex(trackIndex) : nullptr;
}

int64_t MKVSource::MKVStream::TicksToNanoseconds(uint32_t ticks) const {
  return SaturatedNanoseconds(ticks, timecodeScale);
}

const char* MKVSource::MKVStream::kindName() const {
  switch (formatDescriptor.mediaType) {
    case kMediaVideo: return "Video";
    case kMediaAudio: return "Audio";
    default: return "Overlay";
  }
}

// The whole segment's duration in ticks, low 32 bits; a missing Duration
// (-1 ns) gives 0 for any scale above 1.
void MKVSource::MKVStream::storeDuration() {
  const mkvparser::SegmentInfo* info = title->source->segmentInfo;
  if (!info) return;
  duration_ = static_cast<uint32_t>(title->source->segmentDuration / info->GetTimeCodeScale());
}

int MKVSource::MKVStream::openStream(int, int) {
  StreamLock lock(title->mutex);
  endOfStream = 0;
  walkState = WalkStart;
  source = title->source;
  const mkvparser::Track* track = this->track();
  if (!track) return 0;

  size_t size = 0;
  const unsigned char* codecPrivate = track->GetCodecPrivate(size);
  // A buffer still held from an earlier open would be lost.
  releaseCodecData();
  if (codecPrivate && size != 0) {
    std::unique_ptr<TypedMediaBuffer> buffer(new TypedMediaBuffer);
    buffer->attach(std::malloc(size), static_cast<unsigned int>(size));
    if (void* payload = buffer->lock()) {
      std::memcpy(payload, codecPrivate, size);
      buffer->chunkSize() = static_cast<uint32_t>(size);
      if (track->GetType() == mkvparser::Track::kVideo) {
        std::memcpy(buffer->tag, "VID ", sizeof(buffer->tag));
        buffer->mediaType = kMediaVideo;
      } else if (track->GetType() == mkvparser::Track::kAudio) {
        std::memcpy(buffer->tag, "AUD ", sizeof(buffer->tag));
        buffer->mediaType = kMediaAudio;
      }
    }
    buffer->unlock();
    codecData = buffer.release();
  }
  defaultDuration = track->GetDefaultDuration();
  return 0;
}

int MKVSource::MKVStream::closeStream() {
  releaseCodecData();
  return 0;
}

void MKVSource::MKVStream::releaseCodecData() {
  if (!codecData) return;
  std::free(codecData->lock());
  codecData->unlock();
  delete codecData;
  codecData = nullptr;
}

bool MKVSource::MKVStream::setReadSpeed(int speed) {
  if (speed == readSpeed_) return true;
  if (speed < 0) {
    endOfStream = 0;
    readMode_ = kReadOnePerSeek;
  }
  readSpeed_ = speed;
  return true;
}

bool MKVSource::MKVStream::setReadMode(StreamReadMode mode) {
  if (mode == readMode_) return true;
  if (mode == kReadSequential && readSpeed_ < 0) return false;
  readMode_ = mode;
  return true;
}

bool MKVSource::MKVStream::getCodecData(List<TypedMediaBuffer*>* list) {
  if (!list || !codecData || codecData->chunkSize() == 0) return false;
  list->append(codecData);
  codecData = nullptr;
  return true;
}

int MKVSource::MKVStream::resetStream() {
  StreamLock lock(title->mutex);
  endOfStream = 0;
  std::printf("Reset %s Stream %d\n", kindName(), trackIndex);
  return 0;
}

int MKVSource::MKVStream::getSyncPoint(int direction, unsigned int time,
                                       unsigned int* syncPoint) {
  StreamLock lock(title->mutex);
  if (!syncPoint) return kNullSyncPoint;
  *syncPoint = time;
  if (time == 0) {
    std::printf("%s Stream %d: assumed zero sync point\n", kindName(), trackIndex);
    return 0;
  }
  std::printf("%s Stream %d: got sync point %u from time %u (looking %s)\n", kindName(),
              trackIndex, time, time, direction > 0 ? "forward" : "backward");
  return 0;
}

int MKVSource::MKVStream::scanStream(long long, long long*) { return 0; }

}  // namespace KVL
