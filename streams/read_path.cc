// One read, from the cursor to a chunk. Writes lastBlockTime, lastChunkTime, endOfStream and
// walkState, and through the cursor cluster, blocks, entry and frameIndex.
#include <cstdlib>
#include <new>

#include <boost/thread/locks.hpp>

#include "plugin/kvl/result_codes.h"
#include "streams/media_chunk_allocator.h"
#include "streams/mkv_stream.h"

namespace KVL {

int MKVSource::MKVStream::readStream(MediaChunk** chunk) {
  if (!chunk) return 0;
  *chunk = nullptr;
  boost::unique_lock<boost::recursive_mutex> lock(title->mutex);
  // One frame per open or seek: a block has gone out since then.
  if (readMode_ == kReadOnePerSeek && lastBlockTime >= 0) return kReadNothingUntilSeek;

  mkvparser::Block::Frame frame;
  if (!GetFrame(&frame)) {
    endOfStream = 1;
    return 0;
  }
  lastBlockTime = GetBlockTime();

  // A frame whose bytes can't be read (the file shut, cut or changed under
  // us) ends the stream: no chunk goes out with undefined content.
  unsigned char* block = frame.len > 0 ? static_cast<unsigned char*>(std::malloc(frame.len))
                                       : nullptr;
  if (frame.len > 0 && !block) throw std::bad_alloc();
  if (!block || !source || frame.Read(source->reader, block) != 0) {
    std::free(block);
    walkState = WalkEnd;
    endOfStream = 1;
    return 0;
  }

  const auto size = static_cast<unsigned int>(frame.len);
  MediaChunk* made = static_cast<MediaChunkAllocator*>(allocator)->adoptBuffer(block, size);
  made->chunkSize() = size;
  made->startTime = static_cast<uint32_t>(lastBlockTime / timecodeScale);
  made->duration = static_cast<uint32_t>(defaultDuration /
                                         static_cast<unsigned long long>(timecodeScale));
  lastChunkTime = made->startTime + made->duration;
  *chunk = made;
  return 0;
}

}  // namespace KVL
