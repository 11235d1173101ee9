#ifndef PLUGIN_KVL_MEDIA_BUFFER_H_
#define PLUGIN_KVL_MEDIA_BUFFER_H_

#include <cstdint>

#include "plugin/kvl/export.h"

namespace KVL {

class IBufferAllocator;

// A buffer that crosses the border. It carries a heap block handed over with
// attach() but never frees it: whoever took the block over releases the
// address that lock() gives.
class KVL_API MediaBuffer {
 public:
  MediaBuffer();
  virtual ~MediaBuffer();

  uint32_t& chunkSize() { return chunkSize_; }

  virtual void attach(void* data, unsigned int size);
  virtual unsigned int capacity() const;
  virtual void* lock();
  virtual void unlock();

 private:
  void* data_ = nullptr;
  unsigned int capacity_ = 0;
  int locks_ = 0;
  uint32_t chunkSize_ = 0;
};

// One compressed frame on its way to the engine; it goes back through
// freeBuffer() of the allocator it remembers.
class KVL_API MediaChunk : public MediaBuffer {
 public:
  explicit MediaChunk(IBufferAllocator& allocator);
  ~MediaChunk() override;
  IBufferAllocator& allocator() const { return allocator_; }
  // Chunks made and not yet destroyed, in the whole process.
  static long live();

  uint32_t startTime = 0;
  uint32_t duration = 0;

 private:
  IBufferAllocator& allocator_;
};

// A stream's codec private data.
class KVL_API TypedMediaBuffer : public MediaBuffer {
 public:
  char tag[5] = {0, 0, 0, 0, 0};
  uint32_t mediaType = 0;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_MEDIA_BUFFER_H_
