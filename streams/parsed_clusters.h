#ifndef STREAMS_PARSED_CLUSTERS_H_
#define STREAMS_PARSED_CLUSTERS_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "mkvparser/mkvparser.h"

namespace KVL {

class ClusterHeads;
class ClusterPin;

// The blocks of a segment's clusters, parsed into clusters of the title's
// own from the positions of the cluster heads: the segment keeps no clusters,
// and one that parsed every block would keep them all until it goes. The
// title's readers walk the same clusters and share what is parsed here; a
// cluster that no reader holds is kept only among the few let go last, so
// that a reader a little behind the others needn't parse it again.
//
// Ownership: the cache owns and deletes every parsed cluster; a ClusterPin
// keeps its cluster alive. Callers serialise all calls (the title's mutex),
// except ClusterPin::releaseWithoutLock.
class ParsedClusters {
 public:
  // Clusters kept parsed beyond those that pins hold.
  static constexpr size_t kKeptUnheld = 4;

  ParsedClusters() = default;
  ~ParsedClusters();
  ParsedClusters(const ParsedClusters&) = delete;
  ParsedClusters& operator=(const ParsedClusters&) = delete;

  // A hold on the parsed form of cluster `index` of `heads`, the heads of
  // `segment`, made on first demand; empty without a segment or past the last.
  ClusterPin Pin(mkvparser::Segment* segment, const ClusterHeads& heads, size_t index);

  // How many parsed clusters exist: those held, and a few more.
  size_t size() const { return slots_.size(); }

 private:
  friend class ClusterPin;

  // One parsed cluster, keyed by its segment and index: segments of earlier
  // probes stay alive, so no key is reused. Each on the heap, so that a pin
  // can let go of its slot while other slots come and go.
  struct Slot {
    const mkvparser::Segment* segment;
    size_t index;
    std::unique_ptr<mkvparser::Cluster> parsed;
    std::atomic<uint32_t> holds;
    uint64_t letGo;  // the clock when the last hold went under the lock
  };

  void LetGo(Slot* slot);
  // Drops the oldest unheld clusters beyond kKeptUnheld.
  void Trim();

  std::vector<std::unique_ptr<Slot>> slots_;
  uint64_t clock_ = 0;
};

}  // namespace KVL

#endif  // STREAMS_PARSED_CLUSTERS_H_
