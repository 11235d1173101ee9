// A reader's chunk allocator. Writes bitsPerSample and outstanding_.
#include "streams/media_chunk_allocator.h"

#include <cstdlib>
#include <memory>

MediaChunkAllocator::MediaChunkAllocator() { bitsPerSample = 8; }

KVL::MediaChunk* MediaChunkAllocator::getBuffer(unsigned int, unsigned int, unsigned int) {
  return nullptr;
}

KVL::MediaChunk* MediaChunkAllocator::adoptBuffer(unsigned char* data, unsigned int size) {
  std::unique_ptr<unsigned char, decltype(&std::free)> guard(data, &std::free);
  auto* chunk = new KVL::MediaChunk(*this);
  guard.release();
  chunk->attach(data, size);
  ++outstanding_;
  return chunk;
}

void MediaChunkAllocator::freeBuffer(KVL::MediaChunk* chunk) {
  if (!chunk) return;
  --outstanding_;
  std::free(chunk->lock());
  chunk->unlock();
  deleteChunk(chunk);
}
