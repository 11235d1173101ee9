#include "host/host_control.h"

#include <gtest/gtest.h>

namespace kvlhost {
namespace {

class CountedStream : public KVL::StreamInterface {
 public:
  CountedStream(unsigned long long uid, int* destroyed)
      : StreamInterface(1, uid, nullptr), destroyed_(destroyed) {}
  ~CountedStream() override { ++*destroyed_; }
  unsigned int streamType() const override { return KVL::kStreamVideo; }
  int seekStream(unsigned int, unsigned int*, bool) override { return 0; }

 private:
  int* destroyed_;
};

TEST(HostControl, OwnsStreamsFromAddUntilRemove) {
  int destroyed = 0;
  HostControl control;
  const unsigned long long first = control.createUID();
  const unsigned long long second = control.createUID();
  control.addStream(new CountedStream(second, &destroyed));
  control.addStream(new CountedStream(first, &destroyed));
  EXPECT_EQ(control.streams()[0]->streamUID(), second);  // in the order added
  control.removeStream(second);
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(control.getStream(second), nullptr);
  control.removeStream(second);  // twice, and unknown: recorded, harmless
  EXPECT_EQ(destroyed, 1);
  control.dropStreams();
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(control.record().removed, (std::vector<unsigned long long>{second, second}));
}

TEST(HostControl, SeekRequestIsTakenOnce) {
  HostControl control;
  EXPECT_FALSE(control.takeSeekRequest());
  control.seekToTime(100, KVL::SeekRequest{1, 0});
  control.seekToTime(250, KVL::SeekRequest{1, 0});
  EXPECT_EQ(control.takeSeekRequest(), std::optional<uint32_t>(250));
  EXPECT_FALSE(control.takeSeekRequest());
  EXPECT_EQ(control.record().seeksToTime, (std::vector<uint32_t>{100, 250}));
}

}  // namespace
}  // namespace kvlhost
