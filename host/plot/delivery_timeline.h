#ifndef HOST_PLOT_DELIVERY_TIMELINE_H_
#define HOST_PLOT_DELIVERY_TIMELINE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/play/chunk_sink.h"
#include "host/plot/sync_chunks.h"

namespace kvlhost {

// What each stream delivered over time, gathered as chunks arrive into a
// fixed number of columns of equal length in ticks, shared by all streams.
// A column holds the bytes of the chunks in its stretch of time, each
// chunk's bytes spread evenly over the time it lasts, and the count of sync
// chunks that start in it. A chunk that states no duration lasts until its
// stream's next chunk that starts later, as a player shows it, together
// with the others of its start (the frames of a laced block); the last
// ones, or ones that the next doesn't follow, count in the column they
// start in. The columns start out covering the longest stream's duration;
// a chunk past them doubles every column's length, each two merged into
// one, so memory stays the same for any length of file.
class DeliveryTimeline : public ChunkSink {
 public:
  struct Row {
    Row(size_t stream, SyncChunks sync, size_t columns)
        : stream(stream), sync(sync), bytes(columns), syncChunks(columns) {}

    // Chunks without a duration, of one start, until the stream's next chunk.
    struct Held {
      uint64_t start;
      double bytes;
    };

    size_t stream;  // the index in the title's stream list
    SyncChunks sync;
    std::vector<double> bytes;
    std::vector<uint32_t> syncChunks;
    std::optional<Held> held;
  };

  explicit DeliveryTimeline(size_t columns);

  void onCodecData(const StreamReport& stream, const std::vector<uint8_t>& data) override;
  void onChunk(const StreamReport& stream, const KVL::MediaChunk& chunk,
               const uint8_t* payload, size_t size) override;
  // Counts the chunks still held: to be called once the streams have ended.
  void Finish();

  size_t columns() const { return columns_; }
  uint64_t columnTicks() const { return columnTicks_; }
  // The row of the stream with this index, made when its codec data came;
  // null for a stream that had none.
  const Row* row(size_t stream) const;

 private:
  // Counts the row's held chunk as lasting until `next`, if that is later.
  void Release(Row& row, uint64_t next);
  // Doubles the columns' length until they reach `ticks`.
  void Cover(uint64_t ticks);
  void Spread(Row& row, uint64_t start, uint64_t length, double bytes);

  size_t columns_;
  uint64_t columnTicks_ = 1;
  bool chunksSeen_ = false;
  std::vector<Row> rows_;
};

}  // namespace kvlhost

#endif  // HOST_PLOT_DELIVERY_TIMELINE_H_
