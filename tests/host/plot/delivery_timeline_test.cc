// One stream's chunks gathered into four columns over a title of 40 ticks.
#include "host/plot/delivery_timeline.h"

#include <gtest/gtest.h>

#include <numeric>

#include "plugin/kvl/buffer_allocator.h"

namespace kvlhost {
namespace {

class NoAllocator : public KVL::IBufferAllocator {
 public:
  KVL::MediaChunk* getBuffer(unsigned int, unsigned int, unsigned int) override { return nullptr; }
  void freeBuffer(KVL::MediaChunk*) override {}
};

struct Chunk {
  uint32_t start, duration;
  size_t size;
};

// Spread over the time each lasts; without a duration, with the others of its start until the
// next starts, or in its own column where none follows; past the columns, each column twice
// as long.
TEST(DeliveryTimeline, GathersBytesOverTheTimeEachChunkLasts) {
  const struct {
    std::vector<Chunk> chunks;
    std::vector<double> bytes;
    uint64_t columnTicks;
  } cases[] = {
      {{{0, 20, 100}}, {50, 50, 0, 0}, 10},
      {{{5, 10, 100}}, {50, 50, 0, 0}, 10},
      {{{0, 0, 90}, {30, 0, 10}}, {30, 30, 30, 10}, 10},
      {{{0, 0, 30}, {0, 0, 30}, {20, 0, 20}}, {30, 30, 20, 0}, 10},  // a laced block
      {{{20, 0, 60}, {10, 10, 40}}, {0, 40, 60, 0}, 10},
      {{{0, 10, 8}, {30, 10, 2}, {50, 10, 8}}, {8, 2, 8, 0}, 20},
      {{{0, 10, 8}, {150, 0, 8}}, {8, 0, 0, 8}, 40},
  };
  StreamReport stream;
  stream.kind = "audio";
  stream.duration = 40;
  NoAllocator allocator;
  for (size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(i);
    DeliveryTimeline timeline(4);
    timeline.onCodecData(stream, {});
    for (const Chunk& delivered : cases[i].chunks) {
      KVL::MediaChunk chunk(allocator);
      chunk.startTime = delivered.start;
      chunk.duration = delivered.duration;
      const std::vector<uint8_t> payload(delivered.size);
      timeline.onChunk(stream, chunk, payload.data(), payload.size());
    }
    timeline.Finish();
    EXPECT_EQ(timeline.columnTicks(), cases[i].columnTicks);
    EXPECT_EQ(timeline.row(0)->bytes, cases[i].bytes);
    // Every audio chunk is a sync chunk, counted where it starts.
    const std::vector<uint32_t>& sync = timeline.row(0)->syncChunks;
    EXPECT_EQ(std::accumulate(sync.begin(), sync.end(), size_t{0}), cases[i].chunks.size());
  }
}

}  // namespace
}  // namespace kvlhost
