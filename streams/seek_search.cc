// Where a track's seek lands. Writes the caller's result entry and landing pin, and the
// track's first target.
#include "streams/seek_search.h"

#include <limits>
#include <utility>

#include "source/cluster_heads.h"
#include "streams/cluster_pin.h"
#include "streams/parsed_clusters.h"
#include "streams/tick_time.h"

namespace KVL {
namespace {

using mkvparser::BlockEntry;
using mkvparser::Cluster;

struct Search {
  const SegmentClusters& clusters;
  const mkvparser::Track& track;
  bool keyFramesOnly;
  int64_t scale;
  std::vector<bool>& withoutTarget;

  // Times of the file in nanoseconds, bounded rather than wrapped: the
  // parser's Cluster::GetTime multiplies unchecked, and its Block::GetTime
  // gives -1, a time before all others, for one out of range. The cluster's
  // timecode must be a time, not a status.
  int64_t StartOf(size_t index) const {
    return SaturatedNanoseconds(clusters.heads[index].timecode, scale);
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

  // The landing entry among the blocks of cluster `index`, as Scan finds it;
  // `*held` then holds the blocks. A cluster once looked through whole
  // without a target isn't parsed again.
  long InCluster(size_t index, long long timeNs, const BlockEntry** found,
                 ClusterPin* held) const {
    *found = nullptr;
    if (withoutTarget[index]) return 0;
    ClusterPin pin = clusters.parsed.Pin(clusters.segment, clusters.heads, index);
    if (!pin.get()) return 0;
    bool whole = false;
    const long status = Scan(pin.get(), timeNs, found, &whole);
    if (status == 0 && *found) *held = std::move(pin);
    if (status == 0 && whole && !*found) withoutTarget[index] = true;
    return status;
  }

  // The cluster's landing entry: the first target, or with `timeNs` at 0 or
  // above the last target at or before it. Null where there is none.
  // `*whole` tells whether every block was looked at.
  long Scan(const Cluster* cluster, long long timeNs, const BlockEntry** found,
            bool* whole) const {
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
    *whole = status == 0;
    return status < 0 ? status : 0;
  }

  // The track's first target, walking from the first cluster; a cluster
  // without a timecode stops the walk with its status. A cluster whose blocks
  // fail to parse stops it too, but isn't remembered: the file may read
  // better next time.
  long FindFirst(FirstTarget* first) const {
    FirstTarget searched;
    searched.known = true;
    for (size_t index = 0; index < clusters.heads.size(); ++index) {
      if (clusters.heads[index].timecode < 0) {
        searched.status = static_cast<long>(clusters.heads[index].timecode);
        break;
      }
      const BlockEntry* entry = nullptr;
      ClusterPin held;
      const long status = InCluster(index, -1, &entry, &held);
      if (status < 0) return status;
      if (!entry) continue;
      searched.found = true;
      searched.index = index;
      searched.timeNs = TimeOf(entry, held.get());
      break;
    }
    *first = searched;
    return 0;
  }

  // One past the last cluster, from `from` on, starting at or before the
  // time, as a walk from `from` finds it: it stops at the first that starts
  // later, or with the status of one without a timecode.
  long CandidatesEnd(size_t from, long long timeNs, size_t* end) const {
    const size_t count = clusters.heads.size();
    if (clusters.heads.ordered()) {
      size_t low = from, high = count;
      while (low < high) {
        const size_t middle = low + (high - low) / 2;
        if (StartOf(middle) > timeNs)
          high = middle;
        else
          low = middle + 1;
      }
      *end = low;
      return 0;
    }
    for (size_t index = from; index < count; ++index) {
      if (index > from && clusters.heads[index].timecode < 0)
        return static_cast<long>(clusters.heads[index].timecode);
      if (StartOf(index) > timeNs) {
        *end = index;
        return 0;
      }
    }
    *end = count;
    return 0;
  }
};

}  // namespace

long FindSeekEntry(const SegmentClusters& clusters, const mkvparser::Track& track,
                   long long timeNs, bool keyFramesOnly, TrackSeeks* seeks,
                   const BlockEntry** result, ClusterPin* landing) {
  landing->reset();
  *result = track.GetEOS();
  if (!clusters.segment || !clusters.segment->GetInfo()) return 0;
  seeks->withoutTarget.resize(clusters.heads.size());
  const Search search{clusters, track, keyFramesOnly,
                      clusters.segment->GetInfo()->GetTimeCodeScale(), seeks->withoutTarget};
  FirstTarget* first = &seeks->first;
  if (!first->known) {
    const long status = search.FindFirst(first);
    if (status < 0) return status;
  }
  if (first->status < 0) return first->status;
  if (!first->found) return 0;

  size_t end = first->index;
  // A time after the first target: the clusters at or before it.
  if (timeNs > first->timeNs) {
    const long status = search.CandidatesEnd(first->index, timeNs, &end);
    if (status < 0) return status;
  }
  // The time falls at or before the first target, or before the start of its cluster.
  if (end == first->index) {
    const BlockEntry* found = nullptr;
    ClusterPin held;
    const long status = search.InCluster(first->index, -1, &found, &held);
    if (status < 0 || !found) return status;
    *result = found;
    *landing = std::move(held);
    return 0;
  }
  const long long within = keyFramesOnly ? timeNs : -1;
  // No limit on the clusters looked through, unlike the parser's own seek,
  // which gives up after 100 clusters without an entry of the track: a sparse
  // track would otherwise find no landing. Each is parsed and let go in turn.
  for (size_t index = end; index-- > first->index;) {
    const BlockEntry* found = nullptr;
    ClusterPin held;
    const long status = search.InCluster(index, within, &found, &held);
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
