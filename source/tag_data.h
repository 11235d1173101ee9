#ifndef SOURCE_TAG_DATA_H_
#define SOURCE_TAG_DATA_H_

#include <cstdint>

#include "plugin/mkv_source.h"

namespace KVL {

// Matroska element ids of a SimpleTag's children.
enum SimpleTagElement : uint32_t {
  kTagBinary = 0x4485,
  kTagName = 0x45A3,
  kTagString = 0x4487,
  kTagLanguage = 0x447A,
};

// The children of one Matroska SimpleTag. Each slot owns its value, a block
// from malloc(); text values are UTF-8. A null value marks an empty slot.
struct MKVSource::tagData {
  struct Slot {
    void* value;
    uint64_t size;
    uint32_t id;
  };
  Slot slots[5];
};

}  // namespace KVL

#endif  // SOURCE_TAG_DATA_H_
