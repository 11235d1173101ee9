#include "streams/cluster_pin.h"

#include <utility>

namespace KVL {

ClusterPin::ClusterPin(ParsedClusters& cache, const mkvparser::Cluster* head) {
  if (!head || head->EOS()) return;
  parsed_ = cache.Hold(head);
  cache_ = &cache;
  head_ = head;
}

ClusterPin::ClusterPin(ClusterPin&& other) noexcept
    : cache_(std::exchange(other.cache_, nullptr)),
      head_(std::exchange(other.head_, nullptr)),
      parsed_(std::exchange(other.parsed_, nullptr)) {}

ClusterPin& ClusterPin::operator=(ClusterPin&& other) noexcept {
  if (this == &other) return *this;
  reset();
  cache_ = std::exchange(other.cache_, nullptr);
  head_ = std::exchange(other.head_, nullptr);
  parsed_ = std::exchange(other.parsed_, nullptr);
  return *this;
}

void ClusterPin::reset() {
  if (cache_) cache_->LetGo(head_);
  cache_ = nullptr;
  head_ = nullptr;
  parsed_ = nullptr;
}

}  // namespace KVL
