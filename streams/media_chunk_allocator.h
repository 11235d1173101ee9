#ifndef STREAMS_MEDIA_CHUNK_ALLOCATOR_H_
#define STREAMS_MEDIA_CHUNK_ALLOCATOR_H_

#include <atomic>

#include "plugin/kvl/buffer_allocator.h"

// Makes a stream's chunks around heap blocks from the read path, and takes
// them back: freeBuffer() releases the block with free() and the chunk with
// deleteChunk(). It keeps no pool.
class MediaChunkAllocator : public KVL::IBufferAllocator {
 public:
  MediaChunkAllocator();

  KVL::MediaChunk* getBuffer(unsigned int, unsigned int, unsigned int) override;
  void freeBuffer(KVL::MediaChunk* chunk) override;

  // The chunk takes over `data`, a block from malloc().
  KVL::MediaChunk* adoptBuffer(unsigned char* data, unsigned int size);

  int outstandingChunks() const { return outstanding_; }

 private:
  // Chunks come back on whichever thread the engine returns them.
  std::atomic<int> outstanding_{0};
};

#endif  // STREAMS_MEDIA_CHUNK_ALLOCATOR_H_
