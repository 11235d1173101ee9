#ifndef HOST_PLOT_SYNC_CHUNKS_H_
#define HOST_PLOT_SYNC_CHUNKS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/play/play_report.h"

namespace kvlhost {

// Which of a stream's chunks a decoder can start from. The plug-in marks
// none, so they are told from what it delivers: every audio chunk; an H.264
// chunk that holds an IDR picture, an H.265 one that holds an IRAP picture
// (IDR, CRA or BLA), read from NAL units as long as the codec private data
// says; no chunk of another video format can be told.
class SyncChunks {
 public:
  enum class Rule { kEveryChunk, kAvcIdr, kHevcIrap, kUnknown };

  SyncChunks(const StreamReport& stream, const std::vector<uint8_t>& codecPrivate);

  Rule rule() const { return rule_; }
  // Whether some chunks are sync chunks and others not, as far as can be told.
  bool selective() const { return rule_ == Rule::kAvcIdr || rule_ == Rule::kHevcIrap; }
  bool IsSync(const uint8_t* payload, size_t size) const;

 private:
  // Whether the chunk's first picture slice is of a kind that starts one.
  bool StartsWithSyncPicture(const uint8_t* payload, size_t size) const;

  Rule rule_ = Rule::kUnknown;
  size_t lengthSize_ = 4;  // of each NAL unit's length prefix
};

}  // namespace kvlhost

#endif  // HOST_PLOT_SYNC_CHUNKS_H_
