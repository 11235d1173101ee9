#include "host/engine_side/host_control.h"

#include <algorithm>

namespace kvlhost {

using Lock = std::lock_guard<std::mutex>;

int NotReadyCounter::notify() {
  ++count_;
  return 0;
}

HostControl::~HostControl() { dropStreams(); }

unsigned long long HostControl::createUID() {
  Lock lock(mutex_);
  ++record_.uidsIssued;
  return nextUID_++;
}

KVL::vorq_string<char> HostControl::getDefaultAudioLanguage() {
  Lock lock(mutex_);
  ++record_.languageQueries;
  return KVL::vorq_string<char>("");
}

KVL::vorq_string<char> HostControl::getDefaultSubtitleLanguage() {
  Lock lock(mutex_);
  ++record_.languageQueries;
  return KVL::vorq_string<char>("");
}

int32_t HostControl::getCurrentTime(int32_t) { return position_; }

int HostControl::getPlaybackState() {
  Lock lock(mutex_);
  ++record_.stateQueries;
  return kStatePlaying;
}

KVL::DataNotReadySink* HostControl::getDataNotReadySink() { return &sink_; }

int HostControl::reportDataNotReady(unsigned long long streamUID) {
  Lock lock(mutex_);
  record_.notReady.push_back(streamUID);
  return 0;
}

KVL::StreamInterface* HostControl::getStream(unsigned long long streamUID) {
  return lease(streamUID).get();
}

std::shared_ptr<KVL::StreamInterface> HostControl::lease(unsigned long long streamUID) const {
  Lock lock(mutex_);
  for (const auto& stream : streams_) {
    if (stream->streamUID() == streamUID) return stream;
  }
  return nullptr;
}

// The engine answers on the same thread, while the plug-in holds its lock.
int HostControl::requestOpenTitle(unsigned long long titleUID) {
  {
    Lock lock(mutex_);
    record_.titlesRequested.push_back(titleUID);
  }
  const int result = container_ ? container_->openTitle(titleUID) : -1;
  Lock lock(mutex_);
  record_.openTitleResults.push_back(result);
  return 0;
}

int HostControl::titleClosed(unsigned long long titleUID) {
  Lock lock(mutex_);
  record_.titlesClosed.push_back(titleUID);
  return 0;
}

int HostControl::seekToTime(uint32_t time, KVL::SeekRequest) {
  Lock lock(mutex_);
  record_.seeksToTime.push_back(time);
  pendingSeek_ = time;
  return 0;
}

int HostControl::addStream(KVL::StreamInterface* stream) {
  if (!stream) return 0;
  std::shared_ptr<KVL::StreamInterface> owned(stream);
  Lock lock(mutex_);
  record_.added.push_back(stream->streamUID());
  streams_.push_back(std::move(owned));
  return 0;
}

// The stream is destroyed outside the lock: its destructor may call back.
int HostControl::removeStream(unsigned long long streamUID) {
  std::shared_ptr<KVL::StreamInterface> removed;
  {
    Lock lock(mutex_);
    record_.removed.push_back(streamUID);
    const auto found = std::find_if(streams_.begin(), streams_.end(), [&](const auto& stream) {
      return stream->streamUID() == streamUID;
    });
    if (found == streams_.end()) return 0;
    removed = std::move(*found);
    streams_.erase(found);
  }
  return 0;
}

int HostControl::enableStream(unsigned long long streamUID, int) {
  Lock lock(mutex_);
  record_.enabled.push_back(streamUID);
  return 0;
}

std::vector<KVL::StreamInterface*> HostControl::streams() const {
  Lock lock(mutex_);
  std::vector<KVL::StreamInterface*> result;
  for (const auto& stream : streams_) result.push_back(stream.get());
  return result;
}

void HostControl::dropStreams() {
  std::vector<std::shared_ptr<KVL::StreamInterface>> dropped;
  {
    Lock lock(mutex_);
    dropped.swap(streams_);
  }
}

std::optional<uint32_t> HostControl::takeSeekRequest() {
  Lock lock(mutex_);
  std::optional<uint32_t> request;
  request.swap(pendingSeek_);
  return request;
}

ControlRecord HostControl::record() const {
  Lock lock(mutex_);
  ControlRecord copy = record_;
  copy.sinkNotifications = sink_.count();
  return copy;
}

}  // namespace kvlhost
