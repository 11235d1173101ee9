#ifndef SOURCE_VIDEO_CODECS_H_
#define SOURCE_VIDEO_CODECS_H_

namespace KVL {

// The video codecs the engine knows, by Matroska CodecID (whole text, case
// sensitive). The probe asks the engine about `probeFormat`; a stream
// publishes `streamCode`. AVC has no format name of its own for the probe.
struct VideoCodec {
  const char* codecId;
  const char* probeFormat;
  const char* streamCode;
};

// The entry of `codecId`, or null for an unknown or missing id.
const VideoCodec* FindVideoCodec(const char* codecId);

}  // namespace KVL

#endif  // SOURCE_VIDEO_CODECS_H_
