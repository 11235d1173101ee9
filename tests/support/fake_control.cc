#include "tests/support/fake_control.h"

#include <algorithm>

namespace mkvtest {

unsigned long long FakeControl::createUID() { return nextUID_++; }

KVL::vorq_string<char> FakeControl::getDefaultAudioLanguage() {
  record("getDefaultAudioLanguage");
  return KVL::vorq_string<char>("en");
}

KVL::vorq_string<char> FakeControl::getDefaultSubtitleLanguage() {
  record("getDefaultSubtitleLanguage");
  return KVL::vorq_string<char>("en");
}

int32_t FakeControl::getCurrentTime(int32_t) { return currentTime; }
int FakeControl::getPlaybackState() { return playbackState; }

int FakeControl::reportDataNotReady(unsigned long long uid) {
  record("reportDataNotReady " + std::to_string(uid));
  return 0;
}

KVL::StreamInterface* FakeControl::getStream(unsigned long long uid) {
  record("getStream " + std::to_string(uid));
  for (auto& held : streams_) {
    if (held.first == uid) return held.second.get();
  }
  return nullptr;
}

int FakeControl::requestOpenTitle(unsigned long long uid) {
  record("requestOpenTitle " + std::to_string(uid));
  return container_ ? container_->openTitle(uid) : 0;
}

int FakeControl::titleClosed(unsigned long long uid) {
  record("titleClosed " + std::to_string(uid));
  return 0;
}

int FakeControl::seekToTime(uint32_t time, KVL::SeekRequest request) {
  record("seekToTime " + std::to_string(time) + " " + std::to_string(request.kind));
  seekTimes.push_back(time);
  return 0;
}

int FakeControl::addStream(KVL::StreamInterface* stream) {
  record("addStream " + std::to_string(stream->streamUID()));
  streams_.emplace_back(stream->streamUID(), std::unique_ptr<KVL::StreamInterface>(stream));
  return 0;
}

int FakeControl::removeStream(unsigned long long uid) {
  record("removeStream " + std::to_string(uid));
  const auto found = std::find_if(streams_.begin(), streams_.end(),
                                  [uid](const auto& held) { return held.first == uid; });
  if (found != streams_.end()) streams_.erase(found);
  return 0;
}

int FakeControl::enableStream(unsigned long long uid, int enable) {
  record("enableStream " + std::to_string(uid) + " " + std::to_string(enable));
  return enableResult;
}

std::vector<KVL::StreamInterface*> FakeControl::streams() const {
  std::vector<KVL::StreamInterface*> held;
  for (const auto& stream : streams_) held.push_back(stream.second.get());
  return held;
}

}  // namespace mkvtest
