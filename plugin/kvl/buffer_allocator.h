#ifndef PLUGIN_KVL_BUFFER_ALLOCATOR_H_
#define PLUGIN_KVL_BUFFER_ALLOCATOR_H_

#include "plugin/kvl/export.h"
#include "plugin/kvl/media_buffer.h"
#include "plugin/kvl/text.h"

namespace KVL {

// Base of a chunk factory; the engine gives every chunk back through
// freeBuffer() of the allocator that made it.
class KVL_API IBufferAllocator {
 public:
  virtual ~IBufferAllocator();
  virtual int setBufferType(vorq_string<unsigned char> type);
  virtual void setBitsPerSample(unsigned int bits);
  virtual MediaChunk* getBuffer(unsigned int, unsigned int, unsigned int) = 0;
  virtual void freeBuffer(MediaChunk* chunk) = 0;

  // Destroys the chunk object; its payload is the caller's to release.
  void deleteChunk(MediaChunk* chunk);

  unsigned int bitsPerSample = 0;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_BUFFER_ALLOCATOR_H_
