#include "tests/streams/fake_control.h"

#include "plugin/kvl/stream_interface.h"

namespace mkvtest {

FakeControl::~FakeControl() {
  for (KVL::StreamInterface* stream : added) delete stream;
}

// Records the call; gives the slot of the stream of `uid`, or null.
KVL::StreamInterface** FakeControl::record(const char* call, unsigned long long uid) {
  calls.push_back(std::string(call) + " " + std::to_string(uid));
  for (KVL::StreamInterface*& stream : added) {
    if (stream && stream->streamUID() == uid) return &stream;
  }
  return nullptr;
}

KVL::StreamInterface* FakeControl::getStream(unsigned long long uid) {
  KVL::StreamInterface** stream = record("getStream", uid);
  return stream ? *stream : nullptr;
}

int FakeControl::requestOpenTitle(unsigned long long uid) {
  record("requestOpenTitle", uid);
  return container ? container->openTitle(uid) : -1;
}

int FakeControl::titleClosed(unsigned long long uid) {
  record("titleClosed", uid);
  return 0;
}

int FakeControl::addStream(KVL::StreamInterface* stream) {
  record("addStream", stream->streamUID());
  added.push_back(stream);
  return 0;
}

int FakeControl::removeStream(unsigned long long uid) {
  KVL::StreamInterface** stream = record("removeStream", uid);
  if (!stream) return -1;
  delete *stream;
  *stream = nullptr;
  return 0;
}

int FakeControl::enableStream(unsigned long long uid, int) {
  record("enableStream", uid);
  return enableResult;
}

}  // namespace mkvtest
