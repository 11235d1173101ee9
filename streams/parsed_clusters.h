#ifndef STREAMS_PARSED_CLUSTERS_H_
#define STREAMS_PARSED_CLUSTERS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mkvparser/mkvparser.h"

namespace KVL {

// The blocks of the segment's clusters, parsed into clusters of the title's
// own: the segment's clusters keep every block they ever parsed until the
// segment goes, so a full play would hold the whole file's blocks. The
// title's readers walk the same clusters and share what is parsed here; a
// cluster that no reader holds is kept only among the few let go last, so
// that a reader a little behind the others needn't parse it again.
//
// Ownership: the cache owns and deletes every parsed cluster; a ClusterPin
// keeps its cluster alive. Callers serialise all calls (the title's mutex).
class ParsedClusters {
 public:
  // Clusters kept parsed beyond those that pins hold.
  static constexpr size_t kKeptUnheld = 4;

  ParsedClusters() = default;
  ~ParsedClusters();
  ParsedClusters(const ParsedClusters&) = delete;
  ParsedClusters& operator=(const ParsedClusters&) = delete;

  // How many parsed clusters exist: those held, and at most kKeptUnheld more.
  size_t size() const { return slots_.size(); }

 private:
  friend class ClusterPin;

  // Keyed by the segment's cluster, which stands for one position in one
  // segment: segments of earlier probes stay alive, so no key is reused.
  struct Slot {
    const mkvparser::Cluster* head;
    mkvparser::Cluster* parsed;
    uint32_t holds;
    uint64_t letGo;  // the clock when the last hold went
  };

  // The parsed form of `head`, made on first demand; `head` must be a
  // cluster of a segment, not its end marker.
  const mkvparser::Cluster* Hold(const mkvparser::Cluster* head);
  void LetGo(const mkvparser::Cluster* head);
  void DropOldestUnheld();

  std::vector<Slot> slots_;
  uint64_t clock_ = 0;
};

}  // namespace KVL

#endif  // STREAMS_PARSED_CLUSTERS_H_
