#ifndef HOST_ENGINE_SIDE_HELD_CHUNK_H_
#define HOST_ENGINE_SIDE_HELD_CHUNK_H_

#include <memory>

#include "plugin/kvl/buffer_allocator.h"
#include "plugin/kvl/media_buffer.h"

namespace kvlhost {

// Gives a chunk back to the allocator that made it, however the read ends.
struct ChunkReturn {
  void operator()(KVL::MediaChunk* chunk) const { chunk->allocator().freeBuffer(chunk); }
};
using HeldChunk = std::unique_ptr<KVL::MediaChunk, ChunkReturn>;

}  // namespace kvlhost

#endif  // HOST_ENGINE_SIDE_HELD_CHUNK_H_
