#ifndef STREAMS_TITLE_INTERNAL_H_
#define STREAMS_TITLE_INTERNAL_H_

#include <cstdint>
#include <map>

#include <boost/thread/recursive_mutex.hpp>

#include "mkvparser/mkvparser.h"
#include "plugin/mkv_source.h"
#include "streams/parsed_clusters.h"
#include "streams/seek_search.h"

namespace KVL {

// The record that a source shares with all its track readers; its mutex is
// the one lock of the source and its streams, which also guards the blocks
// the readers share.
struct MKVSource::TitleInternal {
  explicit TitleInternal(MKVSource* source) : source(source) {}

  boost::recursive_mutex mutex;
  bool loaded = false;
  int32_t titleIndex = -1;
  MKVSource* source;
  uint32_t references = 1;
  ParsedClusters clusters;
  // What each track's seeks have learnt, by track: each segment's tracks are its own.
  std::map<const mkvparser::Track*, TrackSeeks> trackSeeks;
};

}  // namespace KVL

#endif  // STREAMS_TITLE_INTERNAL_H_
