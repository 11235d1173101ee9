#ifndef HOST_STRESS_STRESS_RULES_H_
#define HOST_STRESS_STRESS_RULES_H_

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "plugin/kvl/media_buffer.h"

namespace kvlhost {

// A delivered frame, told apart from the others by time, size and bytes.
struct FrameKey {
  uint32_t start = 0;
  uint32_t size = 0;
  uint64_t digest = 0;
  bool operator==(const FrameKey& other) const {
    return start == other.start && size == other.size && digest == other.digest;
  }
};

FrameKey KeyOf(KVL::MediaChunk& chunk);

// The broken rules of a run, kept in the order found; beyond a few only
// counted. Any thread may add; the accessors are for after the run.
class BrokenRules {
 public:
  void Add(std::string rule);
  size_t count() const { return count_; }
  const std::vector<std::string>& first() const { return first_; }

 private:
  static constexpr size_t kKept = 8;
  std::mutex mutex_;
  size_t count_ = 0;
  std::vector<std::string> first_;
};

// What must hold of one stream's chunks whatever the interleaving, judged
// against `reference`, the frames one plain sequential read delivered:
// between two seeks the chunks follow one another as in the reference,
// none lost or doubled; sequential reads of a stream stored in time order
// never go back in time; the end comes after the last frame. Not thread-safe:
// the caller makes the calls on one stream one at a time.
class StreamRules {
 public:
  StreamRules(size_t stream, std::vector<FrameKey> reference, BrokenRules& broken);

  // The stream was opened: its first frame comes next.
  void OnOpen();
  // A seek: any frame may come next; after a failed one, anything may.
  void OnSeek(bool landed);
  void OnChunk(const FrameKey& key, bool sequential);
  // The stream reported its end; `closing` once the title may be going.
  void OnEnd(bool closing);
  // An answer of a call that the contract doesn't have.
  void OnAnswer(const char* call, int result);

 private:
  void Break(const std::string& what);

  size_t stream_;
  std::vector<FrameKey> reference_;
  bool inTimeOrder_;
  BrokenRules& broken_;
  // Where in the reference the last chunk may have been; the position is
  // open after a seek, unknown after a failed seek or a broken rule.
  std::vector<size_t> positions_;
  bool open_ = false;
  bool unknown_ = false;
  bool sinceSeek_ = false;
  uint32_t lastStart_ = 0;
};

}  // namespace kvlhost

#endif  // HOST_STRESS_STRESS_RULES_H_
