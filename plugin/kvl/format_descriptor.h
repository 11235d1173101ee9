#ifndef PLUGIN_KVL_FORMAT_DESCRIPTOR_H_
#define PLUGIN_KVL_FORMAT_DESCRIPTOR_H_

#include <cstdint>

namespace KVL {

enum MediaType : uint32_t { kMediaVideo = 1, kMediaAudio = 2 };

// A stream's format. `code` holds the format text in a video stream ("H264")
// and a 32-bit format tag in its first four bytes in an audio stream.
struct FormatDescriptor {
  char code[8];
  uint32_t reason;
  uint32_t mediaType;
  uint32_t reserved;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_FORMAT_DESCRIPTOR_H_
