#include "streams/seek_search.h"

#include <limits>
#include <utility>
#include <vector>

#include "streams/tick_time.h"

namespace KVL {
namespace {

using mkvparser::BlockEntry;
using mkvparser::Cluster;

struct Search {
  ParsedClusters& parsed;
  const mkvparser::Track& track;
  bool keyFramesOnly;
  int64_t scale;

  // Times of the file in nanoseconds, bounded rather than wrapped: the
  // parser's Cluster::GetTime multiplies unchecked, and its Block::GetTime
  // gives -1, a time before all others, for one out of range. The cluster's
  // timecode must be a time, not a status.
  int64_t StartOf(const Cluster* cluster) const {
    return SaturatedNanoseconds(cluster->GetTimeCode(), scale);
  }
  int64_t TimeOf(const BlockEntry* entry, const Cluster* cluster) const {
    int64_t ticks;
    if (__builtin_add_overflow(cluster->GetTimeCode(), entry->GetBlock()->GetTimeCode(nullptr),
                               &ticks))
      ticks = std::numeric_limits<int64_t>::max();
    return SaturatedNanoseconds(ticks, scale);
  }

  bool OfTrack(const BlockEntry* entry) const {
    return entry->GetBlock()->GetTrackNumber() == track.GetNumber();
  }
  bool IsTarget(const BlockEntry* entry) const {
    return OfTrack(entry) && (!keyFramesOnly || entry->GetBlock()->IsKey());
  }

  // The landing entry among the blocks of the segment's cluster `head`, as
  // Scan finds it; `*held` then holds the blocks.
  long InCluster(const Cluster* head, long long timeNs, const BlockEntry** found,
                 ClusterPin* held) const {
    ClusterPin pin(parsed, head);
    const long status = Scan(pin.get(), timeNs, found);
    if (status == 0 && *found) *held = std::move(pin);
    return status;
  }

  // The cluster's landing entry: the first target, or with `timeNs` at 0 or
  // above the last target at or before it. Null where there is none.
  long Scan(const Cluster* cluster, long long timeNs, const BlockEntry** found) const {
    *found = nullptr;
    const BlockEntry* entry = nullptr;
    long status = cluster->GetFirst(entry);
    while (status == 0 && entry && !entry->EOS() && entry->GetBlock()) {
      if (OfTrack(entry)) {
        const bool target = IsTarget(entry);
        if (target && timeNs < 0) {
          *found = entry;
          return 0;
        }
        if (timeNs >= 0 && TimeOf(entry, cluster) > timeNs) return 0;
        if (target) *found = entry;
      }
      status = cluster->GetNext(entry, entry);
    }
    return status < 0 ? status : 0;
  }
};

bool Usable(const Cluster* cluster) { return cluster && !cluster->EOS(); }

}  // namespace

long FindSeekEntry(ParsedClusters& parsed, mkvparser::Segment* segment,
                   const mkvparser::Track& track, long long timeNs, bool keyFramesOnly,
                   const BlockEntry** result, ClusterPin* landing) {
  landing->reset();
  *result = track.GetEOS();
  if (!segment || !segment->GetInfo()) return 0;
  const Search search{parsed, track, keyFramesOnly, segment->GetInfo()->GetTimeCodeScale()};

  // The track's first target, and the clusters from its cluster on.
  std::vector<const Cluster*> clusters;
  const BlockEntry* first = nullptr;
  ClusterPin firstHeld;
  for (const Cluster* cluster = segment->GetFirst(); Usable(cluster);
       cluster = segment->GetNext(cluster)) {
    // A cluster that can't give its timecode gives the parser's status.
    const long long timecode = cluster->GetTimeCode();
    if (timecode < 0) return static_cast<long>(timecode);
    if (!first) {
      const long status = search.InCluster(cluster, -1, &first, &firstHeld);
      if (status < 0) return status;
      if (!first) continue;
      if (timeNs <= search.TimeOf(first, cluster)) {
        *result = first;
        *landing = std::move(firstHeld);
        return 0;
      }
    }
    // Clusters that start after the time end the search.
    if (search.StartOf(cluster) > timeNs) break;
    clusters.push_back(cluster);
  }
  if (!first) return 0;
  // The time falls before the start of the first block's cluster.
  if (clusters.empty()) {
    *result = first;
    *landing = std::move(firstHeld);
    return 0;
  }
  const long long within = keyFramesOnly ? timeNs : -1;
  // No limit on the clusters looked through, unlike the parser's own seek,
  // which gives up after 100 clusters without an entry of the track: a sparse
  // track would otherwise find no landing. Each is parsed and let go in turn.
  for (auto cluster = clusters.rbegin(); cluster != clusters.rend(); ++cluster) {
    const BlockEntry* found = nullptr;
    ClusterPin held;
    const long status = search.InCluster(*cluster, within, &found, &held);
    if (status < 0) return status;
    if (found) {
      *result = found;
      *landing = std::move(held);
      return 0;
    }
  }
  return 0;
}

}  // namespace KVL
