// An engine's control object for tests: it counts UIDs from 1, keeps the
// streams it is given (it deletes them when they are removed or when it
// goes), opens titles on its container for requestOpenTitle, and writes
// down the calls in order.
#ifndef MKVSOURCE_TESTS_SUPPORT_FAKE_CONTROL_H_
#define MKVSOURCE_TESTS_SUPPORT_FAKE_CONTROL_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "plugin/kvl/container_interface.h"
#include "plugin/kvl/control_interface.h"
#include "plugin/kvl/stream_interface.h"

namespace mkvtest {

class FakeControl : public KVL::ControlInterface {
 public:
  void setContainer(KVL::ContainerInterface* container) { container_ = container; }

  unsigned long long createUID() override { return nextUID_++; }
  KVL::vorq_string<char> getDefaultAudioLanguage() override;
  KVL::vorq_string<char> getDefaultSubtitleLanguage() override;
  int32_t getCurrentTime(int32_t) override { return currentTime; }
  int getPlaybackState() override { return 0; }
  KVL::DataNotReadySink* getDataNotReadySink() override { return nullptr; }
  int reportDataNotReady(unsigned long long uid) override;
  KVL::StreamInterface* getStream(unsigned long long uid) override;
  int requestOpenTitle(unsigned long long uid) override;
  int titleClosed(unsigned long long uid) override;
  int seekToTime(uint32_t time, KVL::SeekRequest request) override;
  int addStream(KVL::StreamInterface* stream) override;
  int removeStream(unsigned long long uid) override;
  int enableStream(unsigned long long uid, int enable) override;

  // The streams held, in the order they were added.
  std::vector<KVL::StreamInterface*> streams() const;

  // The calls so far, e.g. "addStream 12", "enableStream 12 1".
  std::vector<std::string> calls;
  int32_t currentTime = 0;
  int enableResult = 0;  // what enableStream() answers
  std::vector<uint32_t> seekTimes;

 private:
  // Records "call uid" and gives the place of the stream of `uid`, or end.
  std::vector<std::unique_ptr<KVL::StreamInterface>>::iterator Record(const std::string& call,
                                                                      unsigned long long uid);

  KVL::ContainerInterface* container_ = nullptr;
  unsigned long long nextUID_ = 1;
  std::vector<std::unique_ptr<KVL::StreamInterface>> streams_;
};

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_FAKE_CONTROL_H_
