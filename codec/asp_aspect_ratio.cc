#include "codec/asp_aspect_ratio.h"

#include <algorithm>

namespace {

// The Video Object Layer start code 00 00 01 2x without its last four bits.
constexpr uint32_t kLayerStartCodePrefix = 0x12;
constexpr uint32_t kExtendedPar = 15;

void StoreTableRatio(uint32_t aspectRatioInfo, unsigned int* parWidth,
                     unsigned int* parHeight) {
  struct Ratio {
    unsigned int width;
    unsigned int height;
  };
  static constexpr Ratio kRatios[] = {{12, 11}, {10, 11}, {16, 11}, {40, 33}};
  const bool listed = aspectRatioInfo >= 2 && aspectRatioInfo <= 5;
  const Ratio ratio = listed ? kRatios[aspectRatioInfo - 2] : Ratio{1, 1};
  *parWidth = ratio.width;
  *parHeight = ratio.height;
}

// Reads the ratio of a layer header whose start code would begin at bit
// `p` + 32. When there is none, or the data ends inside it, `*next` is the
// position of the last read, from which the search goes on.
bool ReadLayerRatio(const unsigned char* data, unsigned int size, uint64_t p,
                    uint64_t* next, unsigned int* parWidth,
                    unsigned int* parHeight) {
  uint32_t value;
  uint64_t q = p + 32;
  *next = q;
  if (!readASPBits(data, size, q, 28, &value) || value != kLayerStartCodePrefix)
    return false;
  // Behind the start code: random_accessible_vol and the 8-bit
  // video_object_type_indication, then is_object_layer_identifier.
  q = p + 73;
  *next = q;
  if (!readASPBits(data, size, q, 1, &value))
    return false;
  // A set identifier is followed by the 4-bit verid and the 3-bit priority.
  q = value ? p + 81 : p + 74;
  *next = q;
  uint32_t aspectRatioInfo;
  if (!readASPBits(data, size, q, 4, &aspectRatioInfo))
    return false;
  if (aspectRatioInfo != kExtendedPar) {
    StoreTableRatio(aspectRatioInfo, parWidth, parHeight);
    return true;
  }
  q += 4;
  *next = q;
  if (!readASPBits(data, size, q, 8, &value))
    return false;
  q += 8;
  *next = q;
  *parWidth = value;
  if (!readASPBits(data, size, q, 8, &value))
    return false;
  *parHeight = value;
  return true;
}

}  // namespace

bool readASPBits(const unsigned char* data, unsigned int size,
                 uint64_t bitPosition, unsigned int bitCount,
                 uint32_t* result) {
  if (!result)
    return false;
  *result = 0;
  // A null buffer has nothing to read, and a count above 32 has no room.
  if (!data || bitCount > 32)
    return false;
  uint64_t byte = bitPosition / 8;
  if (byte >= size)
    return false;
  unsigned int skip = bitPosition % 8;
  unsigned int wanted = bitCount;
  uint64_t value = 0;
  for (; wanted > 0 && byte < size; ++byte, skip = 0) {
    const unsigned int available = 8 - skip;
    const unsigned int taken = std::min(available, wanted);
    const unsigned int bits =
        (data[byte] >> (available - taken)) & ((1u << taken) - 1);
    value = (value << taken) | bits;
    wanted -= taken;
  }
  *result = static_cast<uint32_t>(value);
  return wanted == 0;
}

bool getPARFromASPBitstream(unsigned char* data, unsigned int size,
                            unsigned int* parWidth, unsigned int* parHeight) {
  if (!data || size <= 9 || !parWidth || !parHeight)
    return false;
  uint32_t ignored;
  for (uint64_t p = 0; readASPBits(data, size, p, 32, &ignored);) {
    uint64_t next;
    if (ReadLayerRatio(data, size, p, &next, parWidth, parHeight))
      return true;
    p = next + 8;
  }
  return false;
}
