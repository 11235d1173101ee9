// The title's cache of parsed clusters. Writes slots_, clock_ and a slot's holds and letGo.
#include "streams/parsed_clusters.h"

#include <algorithm>
#include <new>

#include "source/cluster_heads.h"
#include "streams/cluster_pin.h"

namespace KVL {

ParsedClusters::~ParsedClusters() = default;

ClusterPin ParsedClusters::Pin(mkvparser::Segment* segment, const ClusterHeads& heads,
                               size_t index) {
  if (!segment || index >= heads.size()) return ClusterPin();
  for (const auto& slot : slots_) {
    if (slot->segment != segment || slot->index != index) continue;
    slot->holds.fetch_add(1);
    return ClusterPin(this, slot.get());
  }
  // Pins let go without the lock leave their clusters unheld beyond the few.
  Trim();
  std::unique_ptr<mkvparser::Cluster> parsed(
      mkvparser::Cluster::Create(segment, static_cast<long>(index), heads[index].position));
  // Create fails only for want of memory: the head has a segment and a place.
  if (!parsed) throw std::bad_alloc();
  slots_.push_back(std::unique_ptr<Slot>(new Slot{segment, index, std::move(parsed), {1}, 0}));
  return ClusterPin(this, slots_.back().get());
}

void ParsedClusters::LetGo(Slot* slot) {
  if (slot->holds.fetch_sub(1) == 1) slot->letGo = ++clock_;
  Trim();
}

void ParsedClusters::Trim() {
  auto unheld = [](const std::unique_ptr<Slot>& slot) { return slot->holds.load() == 0; };
  while (static_cast<size_t>(std::count_if(slots_.begin(), slots_.end(), unheld)) > kKeptUnheld) {
    auto oldest = slots_.end();
    for (auto slot = slots_.begin(); slot != slots_.end(); ++slot) {
      if (unheld(*slot) && (oldest == slots_.end() || (*slot)->letGo < (*oldest)->letGo))
        oldest = slot;
    }
    slots_.erase(oldest);
  }
}

}  // namespace KVL
