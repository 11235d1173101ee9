#include "tests/support/fake_control.h"

namespace mkvtest {

std::vector<std::unique_ptr<KVL::StreamInterface>>::iterator FakeControl::Record(
    const std::string& call, unsigned long long uid) {
  calls.push_back(call + " " + std::to_string(uid));
  auto held = streams_.begin();
  while (held != streams_.end() && (*held)->streamUID() != uid) ++held;
  return held;
}

KVL::vorq_string<char> FakeControl::getDefaultAudioLanguage() {
  calls.push_back("getDefaultAudioLanguage");
  return KVL::vorq_string<char>("en");
}

KVL::vorq_string<char> FakeControl::getDefaultSubtitleLanguage() {
  calls.push_back("getDefaultSubtitleLanguage");
  return KVL::vorq_string<char>("en");
}

int FakeControl::reportDataNotReady(unsigned long long uid) {
  Record("reportDataNotReady", uid);
  return 0;
}

KVL::StreamInterface* FakeControl::getStream(unsigned long long uid) {
  const auto held = Record("getStream", uid);
  return held == streams_.end() ? nullptr : held->get();
}

int FakeControl::requestOpenTitle(unsigned long long uid) {
  Record("requestOpenTitle", uid);
  return container_ ? container_->openTitle(uid) : -1;
}

int FakeControl::titleClosed(unsigned long long uid) {
  Record("titleClosed", uid);
  return 0;
}

int FakeControl::seekToTime(uint32_t time, KVL::SeekRequest request) {
  calls.push_back("seekToTime " + std::to_string(time) + " " + std::to_string(request.kind));
  seekTimes.push_back(time);
  return 0;
}

int FakeControl::addStream(KVL::StreamInterface* stream) {
  Record("addStream", stream->streamUID());
  streams_.emplace_back(stream);
  return 0;
}

int FakeControl::removeStream(unsigned long long uid) {
  const auto held = Record("removeStream", uid);
  if (held == streams_.end()) return -1;
  streams_.erase(held);
  return 0;
}

int FakeControl::enableStream(unsigned long long uid, int enable) {
  Record("enableStream", uid);
  calls.back() += " " + std::to_string(enable);
  return enableResult;
}

std::vector<KVL::StreamInterface*> FakeControl::streams() const {
  std::vector<KVL::StreamInterface*> held;
  for (const auto& stream : streams_) held.push_back(stream.get());
  return held;
}

}  // namespace mkvtest
