#include "plugin/kvl/buffer_allocator.h"
#include "plugin/kvl/media_buffer.h"

namespace KVL {

MediaBuffer::MediaBuffer() = default;
MediaBuffer::~MediaBuffer() = default;

void MediaBuffer::attach(void* data, unsigned int size) {
  data_ = data;
  capacity_ = size;
}

unsigned int MediaBuffer::capacity() const { return capacity_; }

void* MediaBuffer::lock() {
  ++locks_;
  return data_;
}

void MediaBuffer::unlock() {
  if (locks_ > 0) --locks_;
}

MediaChunk::MediaChunk(IBufferAllocator& allocator) : allocator_(allocator) {}

IBufferAllocator::~IBufferAllocator() = default;
int IBufferAllocator::setBufferType(vorq_string<unsigned char>) { return 0; }
void IBufferAllocator::setBitsPerSample(unsigned int bits) { bitsPerSample = bits; }
void IBufferAllocator::deleteChunk(MediaChunk* chunk) { delete chunk; }

}  // namespace KVL
