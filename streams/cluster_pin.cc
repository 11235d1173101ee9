// One hold on a parsed cluster. Writes the pin's cache_ and slot_, and its slot's hold count.
#include "streams/cluster_pin.h"

#include <utility>

namespace KVL {

ClusterPin::ClusterPin(ClusterPin&& other) noexcept
    : cache_(std::exchange(other.cache_, nullptr)), slot_(std::exchange(other.slot_, nullptr)) {}

ClusterPin& ClusterPin::operator=(ClusterPin&& other) noexcept {
  if (this == &other) return *this;
  reset();
  cache_ = std::exchange(other.cache_, nullptr);
  slot_ = std::exchange(other.slot_, nullptr);
  return *this;
}

void ClusterPin::reset() {
  if (slot_) cache_->LetGo(slot_);
  cache_ = nullptr;
  slot_ = nullptr;
}

void ClusterPin::releaseWithoutLock() {
  ParsedClusters::Slot* slot = std::exchange(slot_, nullptr);
  cache_ = nullptr;
  if (slot) slot->holds.fetch_sub(1);
}

}  // namespace KVL
