#ifndef STREAMS_SEEK_SEARCH_H_
#define STREAMS_SEEK_SEARCH_H_

#include "mkvparser/mkvparser.h"
#include "streams/cluster_pin.h"
#include "streams/parsed_clusters.h"

namespace KVL {

// Finds where a seek of `track` to `timeNs` lands, as the parser's own track
// seek defines it: the track's first entry for a time at or before its first
// block; otherwise, in the last loaded cluster starting at or before the time
// that has one, the track's first entry (audio) or its last key block at or
// before the time (video, `keyFramesOnly`); the track's end marker where no
// cluster has one.
//
// The parser's seek asserts on what a file can contain (a time between the
// first block and its cluster's start, unordered cluster times, a read that
// fails while entries load). This walks the same clusters through calls that
// report failure instead, their blocks parsed through `clusters`. Returns 0,
// or the parser's negative status. `*landing` holds the cluster of a landing
// entry, and nothing for the end marker.
long FindSeekEntry(ParsedClusters& clusters, mkvparser::Segment* segment,
                   const mkvparser::Track& track, long long timeNs, bool keyFramesOnly,
                   const mkvparser::BlockEntry** result, ClusterPin* landing);

}  // namespace KVL

#endif  // STREAMS_SEEK_SEARCH_H_
