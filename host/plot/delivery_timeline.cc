#include "host/plot/delivery_timeline.h"

#include <algorithm>

namespace kvlhost {
namespace {

// Each value becomes the sum of two neighbours, the second half zero.
template <typename T>
void MergePairs(std::vector<T>& values) {
  const size_t count = values.size();
  for (size_t i = 0; i < count; ++i) {
    const T first = 2 * i < count ? values[2 * i] : T();
    values[i] = first + (2 * i + 1 < count ? values[2 * i + 1] : T());
  }
}

// The row of `stream` in `rows`, const or not; null if there is none.
template <typename Rows>
auto FindRow(Rows& rows, size_t stream) -> decltype(&rows.front()) {
  for (auto& row : rows) {
    if (row.stream == stream) return &row;
  }
  return nullptr;
}

}  // namespace

DeliveryTimeline::DeliveryTimeline(size_t columns) : columns_(std::max<size_t>(columns, 2)) {}

// Before the first chunk, each stream's duration may lengthen the columns.
void DeliveryTimeline::onCodecData(const StreamReport& stream, const std::vector<uint8_t>& data) {
  if (!chunksSeen_)
    columnTicks_ = std::max<uint64_t>(columnTicks_, (stream.duration + columns_ - 1) / columns_);
  rows_.emplace_back(stream.index, SyncChunks(stream, data), columns_);
}

const DeliveryTimeline::Row* DeliveryTimeline::row(size_t stream) const {
  return FindRow(rows_, stream);
}

void DeliveryTimeline::onChunk(const StreamReport& stream, const KVL::MediaChunk& chunk,
                               const uint8_t* payload, size_t size) {
  Row* row = FindRow(rows_, stream.index);
  if (!row) return;
  chunksSeen_ = true;
  const uint64_t start = chunk.startTime;
  Cover(start + std::max<uint64_t>(chunk.duration, 1));
  const bool sameStart = row->held && row->held->start == start;
  if (chunk.duration == 0 && sameStart) {
    row->held->bytes += static_cast<double>(size);
  } else {
    Release(*row, start);
    if (chunk.duration == 0)
      row->held = Row::Held{start, static_cast<double>(size)};
    else
      Spread(*row, start, chunk.duration, static_cast<double>(size));
  }
  if (row->sync.IsSync(payload, size)) ++row->syncChunks[start / columnTicks_];
}

void DeliveryTimeline::Finish() {
  for (Row& row : rows_) Release(row, 0);
}

void DeliveryTimeline::Release(Row& row, uint64_t next) {
  if (!row.held) return;
  const Row::Held held = *row.held;
  row.held.reset();
  Spread(row, held.start, next > held.start ? next - held.start : 0, held.bytes);
}

void DeliveryTimeline::Cover(uint64_t ticks) {
  while (columns_ * columnTicks_ < ticks) {
    columnTicks_ *= 2;
    for (Row& row : rows_) {
      MergePairs(row.bytes);
      MergePairs(row.syncChunks);
    }
  }
}

void DeliveryTimeline::Spread(Row& row, uint64_t start, uint64_t length, double bytes) {
  if (length == 0) {
    row.bytes[start / columnTicks_] += bytes;
    return;
  }
  const double perTick = bytes / static_cast<double>(length);
  for (uint64_t at = start, end = start + length; at < end;) {
    const uint64_t column = at / columnTicks_;
    const uint64_t next = std::min(end, (column + 1) * columnTicks_);
    row.bytes[column] += perTick * static_cast<double>(next - at);
    at = next;
  }
}

}  // namespace kvlhost
