#ifndef STREAMS_CLUSTER_PIN_H_
#define STREAMS_CLUSTER_PIN_H_

#include "mkvparser/mkvparser.h"
#include "streams/parsed_clusters.h"

namespace KVL {

// One hold on the parsed form of a segment's cluster (see ParsedClusters):
// its entries stay valid while the pin holds it. Empty for none. Made, moved
// and let go under the lock that guards the cache.
class ClusterPin {
 public:
  ClusterPin() = default;
  // Holds the parsed form of `head`; empty for a null head or an end marker.
  ClusterPin(ParsedClusters& cache, const mkvparser::Cluster* head);
  ~ClusterPin() { reset(); }
  ClusterPin(ClusterPin&& other) noexcept;
  ClusterPin& operator=(ClusterPin&& other) noexcept;
  ClusterPin(const ClusterPin&) = delete;
  ClusterPin& operator=(const ClusterPin&) = delete;

  // The cluster whose entries to walk, or null.
  const mkvparser::Cluster* get() const { return parsed_; }
  // The segment's cluster it was parsed from, or null.
  const mkvparser::Cluster* head() const { return head_; }
  void reset();

 private:
  ParsedClusters* cache_ = nullptr;
  const mkvparser::Cluster* head_ = nullptr;
  const mkvparser::Cluster* parsed_ = nullptr;
};

}  // namespace KVL

#endif  // STREAMS_CLUSTER_PIN_H_
