#include "host/stress/stress_rules.h"

#include <algorithm>
#include <utility>

namespace kvlhost {
namespace {

// FNV-1a: cheap, and enough to tell the frames of one stream apart.
uint64_t Digest(const uint8_t* bytes, size_t size) {
  uint64_t hash = 14695981039346656037ull;
  for (size_t i = 0; i < size; ++i) hash = (hash ^ bytes[i]) * 1099511628211ull;
  return hash;
}

bool InTimeOrder(const std::vector<FrameKey>& frames) {
  return std::is_sorted(frames.begin(), frames.end(),
                        [](const FrameKey& a, const FrameKey& b) { return a.start < b.start; });
}

}  // namespace

FrameKey KeyOf(KVL::MediaChunk& chunk) {
  const auto* bytes = static_cast<const uint8_t*>(chunk.lock());
  const uint32_t size = bytes ? chunk.chunkSize() : 0;
  const FrameKey key{chunk.startTime, size, Digest(bytes, size)};
  chunk.unlock();
  return key;
}

void BrokenRules::Add(std::string rule) {
  std::lock_guard<std::mutex> lock(mutex_);
  ++count_;
  if (first_.size() < kKept) first_.push_back(std::move(rule));
}

StreamRules::StreamRules(size_t stream, std::vector<FrameKey> reference, BrokenRules& broken)
    : stream_(stream),
      reference_(std::move(reference)),
      inTimeOrder_(InTimeOrder(reference_)),
      broken_(broken) {
  OnOpen();
}

void StreamRules::OnOpen() {
  positions_ = {0};
  open_ = false;
  unknown_ = false;
  sinceSeek_ = false;
}

void StreamRules::OnSeek(bool landed) {
  open_ = landed;
  unknown_ = !landed;
  sinceSeek_ = false;
}

// `positions_` holds where the next chunk may stand in the reference.
void StreamRules::OnChunk(const FrameKey& key, bool sequential) {
  if (sequential && inTimeOrder_ && sinceSeek_ && key.start < lastStart_)
    Break("chunk at " + std::to_string(key.start) + " after one at " +
          std::to_string(lastStart_));
  sinceSeek_ = true;
  lastStart_ = key.start;
  std::vector<size_t> next;
  for (size_t position : positions_) {
    if (position < reference_.size() && reference_[position] == key) next.push_back(position + 1);
  }
  if (next.empty() && !open_ && !unknown_)
    Break("chunk at " + std::to_string(key.start) + " is not the next frame: one lost or doubled");
  if (next.empty()) {
    // Anywhere it fits: after a seek, and to go on judging after a break.
    for (size_t i = 0; i < reference_.size(); ++i) {
      if (reference_[i] == key) next.push_back(i + 1);
    }
  }
  if (next.empty() && !unknown_)
    Break("chunk at " + std::to_string(key.start) + " is no frame of the stream");
  unknown_ = next.empty();
  open_ = false;
  positions_ = std::move(next);
}

void StreamRules::OnEnd(bool closing) {
  if (closing || open_ || unknown_) return;
  if (std::find(positions_.begin(), positions_.end(), reference_.size()) != positions_.end())
    return;
  Break("ended before its last frame");
}

void StreamRules::OnAnswer(const char* call, int result) {
  Break(std::string(call) + " answered " + std::to_string(result));
}

void StreamRules::Break(const std::string& what) {
  broken_.Add("stream " + std::to_string(stream_) + ": " + what);
}

}  // namespace kvlhost
