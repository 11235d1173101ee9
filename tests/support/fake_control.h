// An engine's control object: UIDs count from 1; it owns the streams it is given
// until removed, and notes the calls in order ("enableStream 12 1").
#ifndef MKVSOURCE_TESTS_SUPPORT_FAKE_CONTROL_H_
#define MKVSOURCE_TESTS_SUPPORT_FAKE_CONTROL_H_

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "plugin/kvl/container_interface.h"
#include "plugin/kvl/control_interface.h"
#include "plugin/kvl/stream_interface.h"

namespace mkvtest {

class FakeControl : public KVL::ControlInterface {
 public:
  using Text = KVL::vorq_string<char>;
  unsigned long long createUID() override { return nextUID_++; }
  Text getDefaultAudioLanguage() override { return Note("audioLanguage"), Text("en"); }
  Text getDefaultSubtitleLanguage() override { return Note("subtitleLanguage"), Text("en"); }
  int32_t getCurrentTime(int32_t) override { return currentTime; }
  int getPlaybackState() override { return 0; }
  KVL::DataNotReadySink* getDataNotReadySink() override { return nullptr; }
  int reportDataNotReady(unsigned long long) override { return 0; }
  KVL::StreamInterface* getStream(unsigned long long uid) override {
    const auto held = Find("getStream", uid);
    return held == held_.end() ? nullptr : held->get();
  }
  int requestOpenTitle(unsigned long long uid) override {
    return Find("requestOpenTitle", uid), container ? container->openTitle(uid) : -1;
  }
  int titleClosed(unsigned long long uid) override { return Find("titleClosed", uid), 0; }
  int seekToTime(uint32_t time, KVL::SeekRequest request) override {
    return Note("seekToTime " + std::to_string(time) + " " + std::to_string(request.kind)), 0;
  }
  int addStream(KVL::StreamInterface* stream) override {
    Find("addStream", stream->streamUID());
    held_.emplace_back(stream);
    return 0;
  }
  int removeStream(unsigned long long uid) override {
    const auto held = Find("removeStream", uid);
    return held == held_.end() ? -1 : (held_.erase(held), 0);
  }
  int enableStream(unsigned long long uid, int enable) override {
    return Note("enableStream " + std::to_string(uid) + " " + std::to_string(enable)), enableResult;
  }

  // The i-th stream held, in the order they were added.
  KVL::StreamInterface* stream(size_t i) const { return held_.at(i).get(); }
  size_t streamCount() const { return held_.size(); }

  KVL::ContainerInterface* container = nullptr;
  std::vector<std::string> calls;
  int32_t currentTime = 0;
  int enableResult = 0;

 private:
  using Held = std::vector<std::unique_ptr<KVL::StreamInterface>>;
  void Note(const std::string& call) { calls.push_back(call); }
  // Notes "call uid"; the place of the stream of `uid`, or the end.
  Held::iterator Find(const std::string& call, unsigned long long uid) {
    Note(call + " " + std::to_string(uid));
    return std::find_if(held_.begin(), held_.end(),
                        [uid](const auto& stream) { return stream->streamUID() == uid; });
  }

  unsigned long long nextUID_ = 1;
  Held held_;
};

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_FAKE_CONTROL_H_
