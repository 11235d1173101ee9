#ifndef STREAMS_SEEK_SEARCH_H_
#define STREAMS_SEEK_SEARCH_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mkvparser/mkvparser.h"

namespace KVL {

class ClusterHeads;
class ClusterPin;
class ParsedClusters;

// Where a track's seeks begin: the cluster of its first target (its first
// block; on a video track its first key block), found by the first seek and
// kept on the title, so that a seek on a sparse track doesn't parse every
// cluster before that one again.
struct FirstTarget {
  bool known = false;
  // The status of a cluster without a timecode before the target; every
  // seek of the track gives it.
  long status = 0;
  bool found = false;  // false: the track has no target
  size_t index = 0;    // of the target's cluster among the heads
  int64_t timeNs = 0;  // of the target
};

// What a track's seeks have learnt of the file, kept on the title: where
// they begin, and the clusters looked through whole without a target, which
// an engine that scrubs a sparse track would otherwise parse at every seek.
struct TrackSeeks {
  FirstTarget first;
  std::vector<bool> withoutTarget;  // by cluster index; empty until a seek
};

// The clusters of the probed segment, parsed through the title's cache.
struct SegmentClusters {
  ParsedClusters& parsed;
  mkvparser::Segment* segment;
  const ClusterHeads& heads;
};

// Finds where a seek of `track` to `timeNs` lands, as the parser's own track
// seek defines it: the track's first entry for a time at or before its first
// block; otherwise, in the last cluster starting at or before the time that
// has one, the track's first entry (audio) or its last key block at or
// before the time (video, `keyFramesOnly`); the track's end marker where no
// cluster has one.
//
// The parser's seek asserts on what a file can contain (a time between the
// first block and its cluster's start, unordered cluster times, a read that
// fails while entries load). This walks the same clusters through calls that
// report failure instead. Cluster start times come from the heads, found by
// halving where they never fall. `*seeks` is the track's, filled in as the
// searches learn. Returns 0, or the parser's negative status.
// `*landing` holds the cluster of a landing entry, and nothing for the end
// marker.
long FindSeekEntry(const SegmentClusters& clusters, const mkvparser::Track& track,
                   long long timeNs, bool keyFramesOnly, TrackSeeks* seeks,
                   const mkvparser::BlockEntry** result, ClusterPin* landing);

}  // namespace KVL

#endif  // STREAMS_SEEK_SEARCH_H_
