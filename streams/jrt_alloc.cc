// The exported allocation functions. Write only the caller's buffer.
#include "streams/jrt_alloc.h"

#include <cstdlib>
#include <cstring>

#include "plugin/kvl/result_codes.h"

namespace {

constexpr char kDialoguePrefix[] = "Dialogue: ";
constexpr size_t kPrefixBytes = sizeof(kDialoguePrefix) - 1;

// Grows `block` to prefix + size + suffix bytes and zeroes the suffix.
unsigned char* Grow(unsigned char* block, unsigned int size, size_t prefix, size_t suffix) {
  auto* grown = static_cast<unsigned char*>(std::realloc(block, prefix + size + suffix));
  if (!grown) {
    // The caller's pointer is cleared, so the old block would be lost.
    std::free(block);
    return nullptr;
  }
  std::memset(grown + prefix + size, 0, suffix);
  return grown;
}

int Allocate(unsigned char** buffer, unsigned int size, size_t suffix) {
  if (!buffer || size == 0) return KVL::kFailed;
  *buffer = Grow(*buffer, size, 0, suffix);
  return *buffer ? 0 : KVL::kFailed;
}

}  // namespace

int JRTVideoAlloc(unsigned char** buffer, unsigned int size) { return Allocate(buffer, size, 4); }
int JRTOverlayAlloc(unsigned char** buffer, unsigned int size) { return Allocate(buffer, size, 4); }
int JRTAudioAlloc(unsigned char** buffer, unsigned int size) { return Allocate(buffer, size, 0); }

int JRTOverlayAllocSSA(unsigned char** buffer, unsigned int size) {
  if (!buffer || size == 0) return KVL::kFailed;
  unsigned char* block = *buffer ? *buffer - kPrefixBytes : nullptr;
  block = Grow(block, size, kPrefixBytes, 1);
  if (!block) {
    *buffer = nullptr;
    return KVL::kFailed;
  }
  std::memcpy(block, kDialoguePrefix, kPrefixBytes);
  *buffer = block + kPrefixBytes;
  return 0;
}
