// A small engine for tests: hands out UIDs from 1, keeps and deletes the
// streams it is given, answers openTitle for requestOpenTitle and records
// the calls that open and close a title, in order.
#ifndef MKVSOURCE_TESTS_STREAMS_FAKE_CONTROL_H_
#define MKVSOURCE_TESTS_STREAMS_FAKE_CONTROL_H_

#include <string>
#include <vector>

#include "plugin/kvl/container_interface.h"
#include "plugin/kvl/control_interface.h"

namespace mkvtest {

class FakeControl : public KVL::ControlInterface {
 public:
  // Deletes the streams that nobody removed.
  ~FakeControl() override;

  unsigned long long createUID() override { return ++lastUID; }
  KVL::vorq_string<char> getDefaultAudioLanguage() override { return {}; }
  KVL::vorq_string<char> getDefaultSubtitleLanguage() override { return {}; }
  int32_t getCurrentTime(int32_t) override { return 0; }
  int getPlaybackState() override { return 0; }
  KVL::DataNotReadySink* getDataNotReadySink() override { return nullptr; }
  int reportDataNotReady(unsigned long long) override { return 0; }
  int seekToTime(uint32_t, KVL::SeekRequest) override { return 0; }
  KVL::StreamInterface* getStream(unsigned long long uid) override;
  int requestOpenTitle(unsigned long long uid) override;
  int titleClosed(unsigned long long uid) override;
  int addStream(KVL::StreamInterface* stream) override;
  int removeStream(unsigned long long uid) override;
  int enableStream(unsigned long long uid, int enable) override;

  // Calls as "addStream 12", in order.
  std::vector<std::string> calls;
  // Every stream added, in order; removed ones are null. Owned.
  std::vector<KVL::StreamInterface*> added;
  // What enableStream() answers.
  int enableResult = 0;
  // Whose openTitle() requestOpenTitle() calls.
  KVL::ContainerInterface* container = nullptr;
  unsigned long long lastUID = 0;

 private:
  KVL::StreamInterface** record(const char* call, unsigned long long uid);
};

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_STREAMS_FAKE_CONTROL_H_
