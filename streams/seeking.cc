// Seeks of both readers. Write entry, blocks, cluster, frameIndex, walkState, lastBlockTime,
// endOfStream and (video) source; the title's trackSeeks.
#include <cstdio>

#include <boost/thread/locks.hpp>

#include "streams/audio_stream.h"
#include "streams/seek_search.h"
#include "streams/video_stream.h"

namespace KVL {

using StreamLock = boost::unique_lock<boost::recursive_mutex>;

// A failed seek leaves no entry worth following: the next read ends the
// stream. A successful one goes on from the landing entry whatever the walk
// had reached, so a seek before the first read or after the end resumes
// there.

// Points the entry where the track's seek lands: on a video track a key
// block, on any other a block of the track.
long MKVSource::MKVStream::seekTrack(int64_t timeNs) {
  const mkvparser::Track* track = this->track();
  if (!track) return -1;
  const bool keyFramesOnly = track->GetType() == mkvparser::Track::kVideo;
  const SegmentClusters clusters{title->clusters, title->source->segment,
                                 *title->source->clusterHeads};
  const long status = FindSeekEntry(clusters, *track, timeNs, keyFramesOnly,
                                    &title->trackSeeks[track], &entry, &blocks);
  cluster = blocks.get();
  return status;
}

void MKVSource::MKVStream::landWalk(const mkvparser::BlockEntry* at, int32_t frame) {
  cluster = blocks.get();
  entry = at;
  frameIndex = frame;
  walkState = WalkInBlock;
  lastBlockTime = -1;
  endOfStream = 0;
}

int MKVSource::AudioStream::seekStream(unsigned int time, unsigned int* actualTime,
                                       bool exact) {
  const uint32_t requested = exact ? time : time + 1;
  const int64_t target = TicksToNanoseconds(requested);
  StreamLock lock(title->mutex);
  resetStream();
  const long status = seekTrack(target);
  if (status != 0) {
    walkState = WalkEnd;
    if (actualTime) *actualTime = 0;
    return static_cast<int>(status);
  }
  const auto position = static_cast<uint32_t>(target / timecodeScale);
  std::printf("Audio Stream %d: seeked to %u (requested time: %u)\n", trackIndex, position,
              position);
  std::printf("Audio Stream %d: seeked/scanned to %u (requested time: %u)\n", trackIndex,
              position, position);
  if (actualTime) *actualTime = position;
  landWalk(entry, frameIndex);
  return 0;
}

int MKVSource::VideoStream::seekStream(unsigned int time, unsigned int* actualTime, bool) {
  StreamLock lock(title->mutex);
  resetStream();
  source = title->source;
  walkState = WalkEnd;
  if (seekTrack(TicksToNanoseconds(time)) != 0 || !cluster) return kFailed;
  // The landing point is the first key block of the cluster, of any track.
  cluster->GetFirst(entry);
  while (entry && !entry->EOS() && entry->GetBlock() && !entry->GetBlock()->IsKey())
    cluster->GetNext(entry, entry);
  if (!entry || entry->EOS() || !entry->GetBlock()) return kFailed;
  const auto position = static_cast<uint32_t>(cluster->GetTimeCode());
  std::printf("Video Stream %d: seeked to %u (requested time: %u)\n", trackIndex, position,
              time);
  if (actualTime) *actualTime = position;
  landWalk(entry, 0);
  return 0;
}

}  // namespace KVL
