#ifndef HOST_PLAY_CHUNK_SINK_H_
#define HOST_PLAY_CHUNK_SINK_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/play/play_report.h"
#include "plugin/kvl/media_buffer.h"

namespace kvlhost {

// Where the player hands what the streams deliver. Calls come one at a time,
// from whichever thread read the chunk; the payload lives for the call only.
class ChunkSink {
 public:
  virtual ~ChunkSink() = default;
  virtual void onCodecData(const StreamReport& stream, const std::vector<uint8_t>& data) = 0;
  virtual void onChunk(const StreamReport& stream, const KVL::MediaChunk& chunk,
                       const uint8_t* payload, size_t size) = 0;
};

// Takes nothing: for the plain report, which keeps totals only.
class NullSink : public ChunkSink {
 public:
  void onCodecData(const StreamReport&, const std::vector<uint8_t>&) override {}
  void onChunk(const StreamReport&, const KVL::MediaChunk&, const uint8_t*, size_t) override {}
};

// Hands every call to two sinks, in turn.
class SinkPair : public ChunkSink {
 public:
  SinkPair(ChunkSink& first, ChunkSink& second) : first_(first), second_(second) {}

  void onCodecData(const StreamReport& stream, const std::vector<uint8_t>& data) override {
    first_.onCodecData(stream, data);
    second_.onCodecData(stream, data);
  }
  void onChunk(const StreamReport& stream, const KVL::MediaChunk& chunk, const uint8_t* payload,
               size_t size) override {
    first_.onChunk(stream, chunk, payload, size);
    second_.onChunk(stream, chunk, payload, size);
  }

 private:
  ChunkSink& first_;
  ChunkSink& second_;
};

}  // namespace kvlhost

#endif  // HOST_PLAY_CHUNK_SINK_H_
