#include "host/play/chunk_pump.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <memory>
#include <string>
#include <thread>

#include "host/engine_side/held_chunk.h"

namespace kvlhost {

ChunkPump::ChunkPump(const std::vector<KVL::StreamInterface*>& streams,
                     std::vector<StreamReport>& reports, ChunkSink& sink,
                     HostControl& control, const TitleTimeScale& scale,
                     ProgressLine& progress)
    : streams_(streams),
      reports_(reports),
      sink_(sink),
      control_(control),
      scale_(scale),
      progress_(progress),
      reading_(streams.size(), true),
      reached_(streams.size(), 0) {}

void ChunkPump::ReadInterleaved() {
  for (;;) {
    size_t next = streams_.size();
    uint32_t earliest = std::numeric_limits<uint32_t>::max();
    for (size_t i = 0; i < streams_.size(); ++i) {
      if (!reading_[i]) continue;
      const uint32_t time = streams_[i]->getLastChunkTime();
      if (next == streams_.size() || time < earliest) {
        next = i;
        earliest = time;
      }
    }
    if (next == streams_.size()) return;
    ReadOne(next);
  }
}

void ChunkPump::ReadOnThreads() {
  std::vector<std::exception_ptr> failures(streams_.size());
  std::vector<std::thread> threads;
  const auto joinAll = [&threads] {
    for (std::thread& thread : threads) thread.join();
  };
  try {
    for (size_t i = 0; i < streams_.size(); ++i) {
      threads.emplace_back([this, i, &failures] {
        try {
          while (ReadOne(i)) {
          }
        } catch (...) {
          failures[i] = std::current_exception();
          std::lock_guard<std::mutex> lock(mutex_);
          reading_[i] = false;
        }
      });
    }
  } catch (...) {
    // No thread may outlive the pump, even when not all of them started.
    joinAll();
    throw;
  }
  joinAll();
  for (const std::exception_ptr& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
}

bool ChunkPump::ReadOne(size_t index) {
  KVL::StreamInterface& stream = *streams_[index];
  KVL::MediaChunk* read = nullptr;
  const int result = stream.readStream(&read);
  HeldChunk chunk(read);
  if (result == KVL::kReadNothingUntilSeek) {
    Stop(index, "nothing more until a seek");
    return false;
  }
  if (result != 0) {
    Stop(index, ("read failed with " + std::to_string(result)).c_str());
    return false;
  }
  if (!chunk) {
    Stop(index, stream.isEOS() ? "end of stream" : "no chunk before the end");
    return false;
  }
  Deliver(index, *chunk);
  return true;
}

void ChunkPump::Deliver(size_t index, KVL::MediaChunk& chunk) {
  static const uint8_t kNoBytes = 0;
  const auto* locked = static_cast<const uint8_t*>(chunk.lock());
  const size_t size = locked ? chunk.chunkSize() : 0;
  const uint8_t* payload = locked ? locked : &kNoBytes;
  std::lock_guard<std::mutex> lock(mutex_);
  StreamReport& report = reports_[index];
  if (report.chunks == 0) report.firstStart = chunk.startTime;
  ++report.chunks;
  report.bytes += size;
  report.lastEnd = chunk.startTime + chunk.duration;
  reached_[index] = std::max(reached_[index], report.lastEnd);
  try {
    sink_.onChunk(report, chunk, payload, size);
  } catch (...) {
    chunk.unlock();
    throw;
  }
  chunk.unlock();
  UpdatePosition();
}

void ChunkPump::Stop(size_t index, const char* ending) {
  std::lock_guard<std::mutex> lock(mutex_);
  reading_[index] = false;
  reports_[index].ending = ending;
  UpdatePosition();
}

void ChunkPump::UpdatePosition() {
  bool any = false;
  uint32_t earliest = std::numeric_limits<uint32_t>::max();
  for (size_t i = 0; i < reached_.size(); ++i) {
    if (!reading_[i]) continue;
    any = true;
    earliest = std::min(earliest, reached_[i]);
  }
  if (!any) return;
  control_.setPosition(static_cast<int32_t>(scale_.ToEngineTime(earliest)));
  progress_.Update(earliest);
}

}  // namespace kvlhost
