#ifndef CODEC_ASP_ASPECT_RATIO_H_
#define CODEC_ASP_ASPECT_RATIO_H_

#include <cstdint>

// Reads `bitCount` bits from `bitPosition` on, most significant first, into
// `result`, never past `size` bytes. False, with `result` 0, for a null result
// or data, a count above 32 or a position at or behind the end; false, with
// the bits read so far, when the data ends first.
bool readASPBits(const unsigned char* data, unsigned int size,
                 uint64_t bitPosition, unsigned int bitCount,
                 uint32_t* result);

// Finds the pixel aspect ratio in the Video Object Layer header of an MPEG-4
// Part 2 frame. The layer's start code is looked for only at byte offsets 4,
// 9, 14 and so on: behind a Video Object start code, as encoders write it.
// True with both ratio terms stored; false when no header is found (or, for
// a stream ending between them, with `parWidth` alone written).
bool getPARFromASPBitstream(unsigned char* data, unsigned int size,
                            unsigned int* parWidth, unsigned int* parHeight);

#endif  // CODEC_ASP_ASPECT_RATIO_H_
