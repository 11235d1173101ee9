#include <atomic>

#include "plugin/kvl/buffer_allocator.h"
#include "plugin/kvl/media_buffer.h"

namespace KVL {
namespace {

// The engine's own count of chunks in flight, for finding lost ones.
std::atomic<long> liveChunks{0};

}  // namespace

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

MediaChunk::MediaChunk(IBufferAllocator& allocator) : allocator_(allocator) { ++liveChunks; }
MediaChunk::~MediaChunk() { --liveChunks; }
long MediaChunk::live() { return liveChunks; }

IBufferAllocator::~IBufferAllocator() = default;
int IBufferAllocator::setBufferType(vorq_string<unsigned char>) { return 0; }
void IBufferAllocator::setBitsPerSample(unsigned int bits) { bitsPerSample = bits; }
void IBufferAllocator::deleteChunk(MediaChunk* chunk) { delete chunk; }

}  // namespace KVL
