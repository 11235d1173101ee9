#ifndef CODEC_AVC_BIT_READER_H_
#define CODEC_AVC_BIT_READER_H_

#include <cstdint>

// Bit-level reads over an H.264 RBSP. Bit n is bit 7 - n % 8 of byte n / 8,
// so values come most significant bit first. The reads keep no state and know
// no end: the caller keeps the position and makes sure the buffer holds every
// bit that is asked for (AVCBitCursor does both).

// The `bitCount` bits from `bitPosition` on; 0 bits give 0. Of a count above
// 64 only the last 64 bits remain.
uint64_t AVCReadUintBits(unsigned char* data, unsigned int bitPosition,
                         unsigned int bitCount);

// As AVCReadUintBits into `result` (when not null) and true, except that a
// `bitPosition` equal to `limit` gives false and reads nothing. Only equality
// is tested.
bool ReadUINTBits(unsigned char* data, unsigned int bitPosition,
                  unsigned int limit, unsigned int bitCount,
                  unsigned long long* result);

// One ue(v) code; its length in bits goes to `bitsUsed`. A code of 64 or more
// leading zeros wraps modulo 2^64.
uint64_t AVCReadExpGolomb(unsigned char* data, unsigned int bitPosition,
                          unsigned int* bitsUsed);

// One se(v) code: the ue(v) codes 0, 1, 2, 3, 4 give 0, 1, -1, 2, -2.
int64_t AVCReadSignedExpGolomb(unsigned char* data, unsigned int bitPosition,
                               unsigned int* bitsUsed);

// Copies a NAL unit's payload into `target` without its emulation prevention
// bytes: a 3 behind two 0 bytes and before a byte below 4, where neither end
// of the source holds it. `*targetSize` is the capacity on entry and the count
// written on return. -2, with nothing written, for a null pointer, an empty
// source or a source longer than the capacity; else 0.
int AVCCopyRemove_Emulation_Prevention_0x03_Byte(unsigned char* source,
                                                 unsigned int sourceSize,
                                                 unsigned char* target,
                                                 unsigned int* targetSize);

#endif  // CODEC_AVC_BIT_READER_H_
