#ifndef SOURCE_CLUSTER_HEADS_H_
#define SOURCE_CLUSTER_HEADS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mkvparser/mkvparser.h"

namespace KVL {

// Where each cluster of a segment starts and its timecode, found the way the
// parser's Segment::Load finds its clusters, with the same verdict on every
// file, but keeping sixteen bytes a cluster instead of the parser's cluster
// objects: Load keeps one for every cluster, and every block of a cluster
// whose size is unknown (as live muxers write them) for as long as the segment
// lives. Readers parse the blocks of a cluster into clusters of their own,
// from its index and position here.
//
// Plain data; the segment it was loaded from stays the caller's.
class ClusterHeads {
 public:
  struct Head {
    int64_t position;  // of the Cluster element, relative to the segment's payload
    // The cluster's timecode in ticks, or the parser's negative status for it.
    int64_t timecode;
  };

  // Reads the segment's headers and every cluster's head, as Load would on a
  // segment just made; returns Load's status. On failure the heads found so
  // far stay, as Load's clusters would.
  long Load(mkvparser::Segment* segment);

  size_t size() const { return heads_.size(); }
  const Head& operator[](size_t index) const { return heads_[index]; }
  // Every timecode a time and none below the one before.
  bool ordered() const { return ordered_; }

 private:
  std::vector<Head> heads_;
  bool ordered_ = true;
};

}  // namespace KVL

#endif  // SOURCE_CLUSTER_HEADS_H_
