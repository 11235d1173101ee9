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
  EXPECT_EQ(first, 1u);
  EXPECT_EQ(second, 2u);
  control.addStream(new CountedStream(second, &destroyed));
  control.addStream(new CountedStream(first, &destroyed));
  ASSERT_EQ(control.streams().size(), 2u);
  EXPECT_EQ(control.streams()[0]->streamUID(), second);  // in the order added
  EXPECT_EQ(control.getStream(first)->streamUID(), first);
  EXPECT_EQ(control.getStream(99), nullptr);

  control.removeStream(second);
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(control.getStream(second), nullptr);
  control.removeStream(second);  // twice, and unknown: recorded, harmless
  EXPECT_EQ(destroyed, 1);
  control.dropStreams();
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(control.record().removed, (std::vector<unsigned long long>{second, second}));
  EXPECT_EQ(control.record().uidsIssued, 2u);
}

TEST(HostControl, AnswersAsAPlayingEngine) {
  HostControl control;
  EXPECT_EQ(control.getDefaultAudioLanguage().length(), 0u);
  EXPECT_EQ(control.getDefaultSubtitleLanguage().length(), 0u);
  const int state = control.getPlaybackState();
  EXPECT_NE(state, KVL::kStateWaitingForData);
  EXPECT_NE(state, KVL::kStateBuffering);
  control.setPosition(1234);
  EXPECT_EQ(control.getCurrentTime(0), 1234);
  ASSERT_NE(control.getDataNotReadySink(), nullptr);
  control.getDataNotReadySink()->notify();
  control.reportDataNotReady(7);
  EXPECT_EQ(control.enableStream(7, 1), 0);
  // No container attached: the title can't be opened, and that is recorded.
  control.requestOpenTitle(3);
  const ControlRecord record = control.record();
  EXPECT_EQ(record.sinkNotifications, 1u);
  EXPECT_EQ(record.notReady, (std::vector<unsigned long long>{7}));
  EXPECT_EQ(record.enabled, (std::vector<unsigned long long>{7}));
  EXPECT_EQ(record.titlesRequested, (std::vector<unsigned long long>{3}));
  EXPECT_EQ(record.openTitleResults, (std::vector<int>{-1}));
  EXPECT_EQ(record.languageQueries, 2u);
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
