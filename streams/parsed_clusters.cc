#include "streams/parsed_clusters.h"

#include <algorithm>
#include <new>

namespace KVL {

ParsedClusters::~ParsedClusters() {
  for (const Slot& slot : slots_) delete slot.parsed;
}

const mkvparser::Cluster* ParsedClusters::Hold(const mkvparser::Cluster* head) {
  for (Slot& slot : slots_) {
    if (slot.head != head) continue;
    ++slot.holds;
    return slot.parsed;
  }
  mkvparser::Cluster* parsed =
      mkvparser::Cluster::Create(head->m_pSegment, head->GetIndex(), head->GetPosition());
  // Create fails only for want of memory: the head has a segment and a place.
  if (!parsed) throw std::bad_alloc();
  try {
    slots_.push_back(Slot{head, parsed, 1, 0});
  } catch (...) {
    delete parsed;
    throw;
  }
  return parsed;
}

void ParsedClusters::LetGo(const mkvparser::Cluster* head) {
  for (Slot& slot : slots_) {
    if (slot.head != head || slot.holds == 0) continue;
    if (--slot.holds == 0) slot.letGo = ++clock_;
    break;
  }
  const auto unheld = std::count_if(slots_.begin(), slots_.end(),
                                    [](const Slot& slot) { return slot.holds == 0; });
  if (static_cast<size_t>(unheld) > kKeptUnheld) DropOldestUnheld();
}

void ParsedClusters::DropOldestUnheld() {
  auto oldest = slots_.end();
  for (auto slot = slots_.begin(); slot != slots_.end(); ++slot) {
    if (slot->holds == 0 && (oldest == slots_.end() || slot->letGo < oldest->letGo))
      oldest = slot;
  }
  if (oldest == slots_.end()) return;
  delete oldest->parsed;
  slots_.erase(oldest);
}

}  // namespace KVL
