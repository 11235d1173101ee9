#include <algorithm>
#include <cstdio>
#include <memory>

#include <boost/thread/locks.hpp>

#include "plugin/kvl/control_interface.h"
#include "plugin/kvl/result_codes.h"
#include "plugin/mkv_source.h"
#include "source/title_info.h"
#include "streams/audio_stream.h"
#include "streams/video_stream.h"

namespace KVL {
namespace {

// The one audio reader always reads position 1 of the whole track list.
constexpr unsigned int kAudioTrackPosition = 1;

}  // namespace

using SourceLock = boost::unique_lock<boost::recursive_mutex>;

// Gives a new reader to the engine; returns its UID.
unsigned long long MKVSource::addReader(MKVStream* reader) {
  std::unique_ptr<MKVStream> stream(reader);
  stream->setTimecodeScale(segmentInfo->GetTimeCodeScale());
  const unsigned long long uid = stream->streamUID();
  control->addStream(stream.release());
  openStreams.push_back(uid);
  return uid;
}

// Every video track gets a reader at its position 0 to n-1 and one audio
// reader reads position 1; the first video reader and the audio reader are
// enabled.
int MKVSource::openTitle(unsigned long long uid) {
  const auto title = titles.find(uid);
  if (title == titles.end() || !control) return kFailed;
  SourceLock lock(mainTitle->mutex);
  mainTitle->titleIndex = static_cast<int32_t>(title->second->index);

  unsigned long long videoUID = 0;
  for (unsigned int i = 0; i < videoTracks.size(); ++i) {
    std::printf("Enumerating video track %d\n", i);
    const unsigned long long streamUID = addReader(new VideoStream(mainTitle, i));
    if (i == 0) videoUID = streamUID;
  }
  unsigned long long audioUID = 0;
  if (!audioTracks.empty()) audioUID = addReader(new AudioStream(mainTitle, kAudioTrackPosition));

  if (!videoTracks.empty() && control->enableStream(videoUID, 1) != 0) return kFailed;
  if (!audioTracks.empty()) control->enableStream(audioUID, 1);

  for (unsigned long long streamUID : openStreams) {
    StreamInterface* stream = control->getStream(streamUID);
    if (!stream) continue;
    if (stream->format()->mediaType == kMediaVideo) stream->properties();
  }
  return 0;
}

int MKVSource::closeTitle(bool keep) {
  if (keep || mainTitle->titleIndex == -1) return 0;
  SourceLock lock(mainTitle->mutex);
  for (unsigned long long streamUID : openStreams) control->removeStream(streamUID);
  const auto title = std::find_if(titles.begin(), titles.end(),
                                  MatchTitleInfoByIndex(mainTitle->titleIndex));
  if (title != titles.end()) control->titleClosed(title->first);
  mainTitle->titleIndex = -1;
  openStreams.clear();
  return 0;
}

void MKVSource::playFirstTitle() {
  SourceLock lock(mainTitle->mutex);
  const auto title = std::find_if(titles.begin(), titles.end(), MatchTitleInfoByIndex(0));
  if (title != titles.end() && control) control->requestOpenTitle(title->first);
}

}  // namespace KVL
