#ifndef STREAMS_JRT_ALLOC_H_
#define STREAMS_JRT_ALLOC_H_

// Exported helpers that make or grow `*buffer` on the process heap to hold
// `size` payload bytes. They give 0, or -1 when `size` is 0 (nothing
// changes) or the heap refuses (the old block is freed, `*buffer` is null).
#define JRT_EXPORT extern "C" __attribute__((visibility("default")))

// Four zero bytes follow the payload.
JRT_EXPORT int JRTVideoAlloc(unsigned char** buffer, unsigned int size);
JRT_EXPORT int JRTOverlayAlloc(unsigned char** buffer, unsigned int size);
// The payload alone.
JRT_EXPORT int JRTAudioAlloc(unsigned char** buffer, unsigned int size);
// "Dialogue: " before the payload, a zero byte behind it; `*buffer` points
// behind the prefix, also when it comes in from an earlier call.
JRT_EXPORT int JRTOverlayAllocSSA(unsigned char** buffer, unsigned int size);

#endif  // STREAMS_JRT_ALLOC_H_
