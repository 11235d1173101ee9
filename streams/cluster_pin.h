#ifndef STREAMS_CLUSTER_PIN_H_
#define STREAMS_CLUSTER_PIN_H_

#include <cstddef>

#include "mkvparser/mkvparser.h"
#include "streams/parsed_clusters.h"

namespace KVL {

// One hold on a parsed cluster of the title's cache (see ParsedClusters): its
// entries stay valid while the pin holds it. Empty for none. Made, moved and
// let go under the lock that guards the cache, but for releaseWithoutLock.
class ClusterPin {
 public:
  ClusterPin() = default;
  ~ClusterPin() { reset(); }
  ClusterPin(ClusterPin&& other) noexcept;
  ClusterPin& operator=(ClusterPin&& other) noexcept;
  ClusterPin(const ClusterPin&) = delete;
  ClusterPin& operator=(const ClusterPin&) = delete;

  // The cluster whose entries to walk, or null.
  const mkvparser::Cluster* get() const { return slot_ ? slot_->parsed.get() : nullptr; }
  // Its index among the segment's cluster heads; 0 for an empty pin.
  size_t index() const { return slot_ ? slot_->index : 0; }
  void reset();
  // Lets go by one atomic step and touches nothing after it: the cluster is
  // dropped later, under the lock, by whoever finds it unheld. For a reader
  // that goes without taking the lock.
  void releaseWithoutLock();

 private:
  friend class ParsedClusters;
  ClusterPin(ParsedClusters* cache, ParsedClusters::Slot* slot) : cache_(cache), slot_(slot) {}

  ParsedClusters* cache_ = nullptr;
  ParsedClusters::Slot* slot_ = nullptr;
};

}  // namespace KVL

#endif  // STREAMS_CLUSTER_PIN_H_
