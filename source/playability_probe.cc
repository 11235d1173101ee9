#include <cstring>
#include <string>

#include "plugin/kvl/logger.h"
#include "plugin/kvl/saved_session.h"
#include "plugin/mkv_source.h"
#include "source/cluster_heads.h"
#include "runtime/paths/path_tools.h"
#include "source/segment_duration.h"
#include "source/video_codecs.h"

namespace KVL {
namespace {

constexpr uint32_t kRefusedFormatReason = 20;

std::string SchemeOf(const vorq_string<unsigned char>& uri) {
  const std::string text(reinterpret_cast<const char*>(uri.data()), uri.length());
  const size_t separator = text.find(":/");
  return separator == std::string::npos ? std::string() : text.substr(0, separator);
}

FormatDescriptor RefusedVideoFormat(const std::string& format) {
  FormatDescriptor descriptor = {};
  std::strncpy(descriptor.code, format.c_str(), sizeof(descriptor.code) - 1);
  descriptor.reason = kRefusedFormatReason;
  descriptor.mediaType = kMediaVideo;
  return descriptor;
}

}  // namespace

bool MKVSource::canPlay(MediaSource& source, const PlaybackProfile*, void** savedSession,
                        std::vector<FormatDescriptor>* unsupportedFormats) {
  const vorq_string<unsigned char> sourceUri(source.getUri());
  if (sourceUri.length() == 0) return false;
  // A remote source is answered without looking at it.
  if (SchemeOf(sourceUri) == "http") return true;

  vorq_string<unsigned char> path;
  if (PathTools::URIToSystemFilePath(sourceUri, path) != 0) return false;
  if (reader->Open(reinterpret_cast<const char*>(path.data())) != 0) return false;
  if (!parseSegment()) return false;
  if (videoTracks.empty()) return false;

  std::string format;
  const char* codecId = videoTracks.front()->GetCodecId();
  if (const VideoCodec* codec = FindVideoCodec(codecId)) {
    format = codec->probeFormat;
  } else if (codecId) {
    Logger::instance().log("MKVSource", "canPlay", 356, "Unknown CodecID:%s\n", codecId);
  }

  if (context && !context->checkVideoFormat(vorq_string<char>(format.c_str()))) {
    if (unsupportedFormats) unsupportedFormats->push_back(RefusedVideoFormat(format));
    reader->Close();
    return false;
  }
  reader->Close();

  auto* session = new SavedSession{&source};
  if (savedSession)
    *savedSession = session;
  else
    closeSavedSession(session);
  return true;
}

// Parses the file's headers and finds every cluster's head, and sorts its
// tracks. On failure the reader stays open with what was parsed so far.
bool MKVSource::parseSegment() {
  long long position = 0;
  if (ebmlHeader.Parse(reader, position) != 0) return false;
  // Tracks and cursors may still point into an earlier segment: keep it.
  if (segment) retiredSegments.push_back(segment);
  *clusterHeads = ClusterHeads();
  if (mkvparser::Segment::CreateInstance(reader, position, segment) != 0) return false;
  if (clusterHeads->Load(segment) != 0) return false;

  segmentInfo = segment->GetInfo();
  segmentDuration = SegmentDuration(*segmentInfo, reader);
  tracks = segment->GetTracks();
  for (unsigned long index = 0; index < tracks->GetTracksCount(); ++index) {
    const mkvparser::Track* track = tracks->GetTrackByIndex(index);
    if (!track) continue;
    if (track->GetType() == mkvparser::Track::kVideo)
      videoTracks.push_back(static_cast<const mkvparser::VideoTrack*>(track));
    else if (track->GetType() == mkvparser::Track::kAudio)
      audioTracks.push_back(static_cast<const mkvparser::AudioTrack*>(track));
  }
  return true;
}

}  // namespace KVL
