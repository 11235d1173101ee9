#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/source_harness.h"
#include "tests/support/media_files.h"

namespace mkvtest {
namespace {

// The video reader lands on the first key block of a cluster (an audio block
// in the committed sample, which has a video key frame every second) and
// reports the cluster's timecode; then come the file's video frames from
// that cluster on (`before` frames lie in earlier clusters). The seeks run
// one after the other on one stream.
TEST(SeekingTest, VideoSeeksLandAtClusterStarts) {
  OpenedTitle t(MediaPath("sample"));
  KVL::StreamInterface* stream = t.opened(0);
  const std::vector<Chunk> all = ReadChunks(stream);
  ASSERT_EQ(all.size(), 125u);
  struct Case {
    unsigned int time, landing, before;
    size_t read;  // chunks to read after the seek; 200 reads to the end
  } cases[] = {{1500, 929, 25, 200}, {0, 23, 0, 5},        {2500, 1857, 48, 5},
               {500, 23, 0, 200},    {2800, 1857, 48, 200}, {4900, 3854, 98, 5},
               {0xFFFFFFFF, 3854, 98, 200}};
  for (const Case& c : cases) {
    unsigned int actual = 0;
    const std::string out = StdoutOf([&] {
      EXPECT_EQ(stream->seekStream(c.time, &actual, c.time % 2 == 0), 0);
    });
    EXPECT_EQ(actual, c.landing);
    EXPECT_EQ(out, "Reset Video Stream 0\nVideo Stream 0: seeked to " + std::to_string(c.landing) +
                       " (requested time: " + std::to_string(c.time) + ")\n");
    EXPECT_FALSE(stream->isEOS());
    const size_t end = std::min(all.size(), c.before + c.read);
    EXPECT_EQ(Describe(ReadChunks(stream, c.read)),
              Describe(std::vector<Chunk>(all.begin() + c.before, all.begin() + end)))
        << c.time;
  }
}

Block V(int16_t time, bool key) { return SimpleBlock(1, time, key, {Payload(4, time % 256)}); }
Block A(int16_t time, bool key = true) { return SimpleBlock(2, time, key, {Payload(3)}); }

// Where the first key block of the cluster stands decides where the video
// walk resumes: a leading non-key video block is passed by, a leading audio
// key block is the landing point and the video walk takes the next video
// block, key or not.
TEST(SeekingTest, VideoSeekLandsOnTheClustersFirstKeyBlock) {
  struct Case {
    Cluster second;
    uint32_t firstStart;
  } cases[] = {{Cluster{1000, {V(0, false), A(10), V(20, true), V(60, false)}}, 1020},
               {Cluster{1000, {A(0), V(10, false), V(20, true)}}, 1010}};
  for (const Case& c : cases) {
    OpenedTitle t(WriteAv({Cluster{0, {V(0, true), A(0)}}, c.second}));
    KVL::StreamInterface* stream = t.opened(0);
    unsigned int actual = 0;
    StdoutOf([&] { EXPECT_EQ(stream->seekStream(1050, &actual, true), 0); });
    EXPECT_EQ(actual, 1000u);
    const std::vector<Chunk> chunks = ReadChunks(stream, 1);
    ASSERT_EQ(chunks.size(), 1u);
    EXPECT_EQ(chunks[0].start, c.firstStart);
  }
}

// No key block to land on: the video seek gives -1 and leaves the time
// untouched; on an audio track without blocks it succeeds. Either way the
// next read ends the stream.
TEST(SeekingTest, SeekWithNothingToLandOnEndsReading) {
  OpenedTitle t(WriteAv({Cluster{0, {V(0, false)}}, Cluster{1000, {V(0, false)}}}));
  for (size_t i = 0; i < 2; ++i) {
    KVL::StreamInterface* stream = t.opened(i);
    ReadChunks(stream, 1);
    unsigned int actual = 77;
    StdoutOf([&] { EXPECT_EQ(stream->seekStream(500, &actual, true), i == 0 ? -1 : 0); });
    EXPECT_EQ(actual, i == 0 ? 77u : 500u);
    EXPECT_TRUE(ReadChunks(stream).empty());
    EXPECT_TRUE(stream->isEOS());
  }
}

// The audio reader reports the time asked for (+1 when not exact) and goes
// on from the parser's entry; a stream that has delivered a frame has used
// up a single-frame landing block.
TEST(SeekingTest, AudioSeekReportsTheRequestedTime) {
  OpenedTitle t(WriteAv({Cluster{0, {V(0, true), A(0), A(500)}},
                        Cluster{1000, {V(0, true), A(0), A(500)}},
                        Cluster{2000, {V(0, true), A(0), A(500)}}}));
  KVL::StreamInterface* stream = t.opened(1);
  struct Case {
    unsigned int time;
    bool exact;
    unsigned int reported;
    uint32_t next;
  } cases[] = {{1600, true, 1600, 1000}, {1000, false, 1001, 1500}, {0, true, 0, 500},
               {0, false, 1, 500},       {9000, true, 9000, 2500}};
  for (const Case& c : cases) {
    unsigned int actual = 0;
    const std::string out = StdoutOf([&] { EXPECT_EQ(stream->seekStream(c.time, &actual, c.exact), 0); });
    const std::string at = std::to_string(c.reported);
    EXPECT_EQ(out, "Reset Audio Stream 1\nAudio Stream 1: seeked to " + at + " (requested time: " +
                       at + ")\nAudio Stream 1: seeked/scanned to " + at + " (requested time: " +
                       at + ")\n");
    EXPECT_EQ(actual, c.reported);
    const std::vector<Chunk> chunks = ReadChunks(stream, 1);
    ASSERT_EQ(chunks.size(), 1u) << c.time;
    EXPECT_EQ(chunks[0].start, c.next) << c.time;
  }
  StdoutOf([&] { EXPECT_EQ(stream->seekStream(100, nullptr, true), 0); });
  EXPECT_EQ(ReadChunks(stream).size(), 5u);  // 500 to 2500
}

TEST(SeekingTest, SyncPointsResetAndScan) {
  OpenedTitle t(WriteAv({Cluster{0, {V(0, true), A(0)}}}));
  KVL::StreamInterface* video = t.opened(0);
  const std::string prefix = "Video Stream 0: got sync point 5000 from time 5000 (looking ";
  struct Case {
    int direction;
    unsigned int time;
    std::string out;
  } cases[] = {{1, 5000, prefix + "forward)\n"}, {-1, 5000, prefix + "backward)\n"},
               {0, 5000, prefix + "backward)\n"}, {1, 0, "Video Stream 0: assumed zero sync point\n"}};
  for (const Case& c : cases) {
    unsigned int point = 1;
    EXPECT_EQ(StdoutOf([&] { EXPECT_EQ(video->getSyncPoint(c.direction, c.time, &point), 0); }),
              c.out);
    EXPECT_EQ(point, c.time);
  }
  EXPECT_EQ(StdoutOf([&] { EXPECT_EQ(video->getSyncPoint(1, 5, nullptr), int(0x80100001)); }), "");

  KVL::StreamInterface* audio = t.opened(1);
  EXPECT_EQ(ReadChunks(audio).size(), 1u);
  EXPECT_EQ(StdoutOf([&] { EXPECT_EQ(audio->resetStream(), 0); }), "Reset Audio Stream 1\n");
  EXPECT_FALSE(audio->isEOS());
  EXPECT_TRUE(ReadChunks(audio).empty());  // the cursor stays at the end
  long long result = 0;
  EXPECT_EQ(audio->scanStream(1234, &result), 0);
  EXPECT_EQ(video->scanStream(99, &result), 0);
  EXPECT_EQ(result, 1234);
}

// Layouts the parser's own track seek aborts on: a time between a track's
// first block and the start of its cluster (a block before its cluster, as
// encoders write audio), and cluster times out of order. Every seek lands
// on a block of the file and reading goes on.
TEST(SeekingTest, SeeksSurviveLayoutsThatTrapTheParsersSeek) {
  const std::vector<std::vector<Cluster>> layouts = {
      {Cluster{100, {A(-100), V(0, true)}}, Cluster{1100, {V(0, true), A(0)}}},
      {Cluster{0, {V(0, true), A(0)}}, Cluster{2000, {V(0, true), A(0)}},
       Cluster{1000, {V(0, true), A(0)}}},
  };
  for (const auto& clusters : layouts) {
    OpenedTitle t(WriteAv(clusters));
    ASSERT_TRUE(t.ok);
    for (unsigned int time : {0u, 1u, 50u, 99u, 1500u, 2500u}) {
      for (size_t i = 0; i < 2; ++i) {
        unsigned int actual = 0;
        StdoutOf([&] { EXPECT_EQ(t.opened(i)->seekStream(time, &actual, true), 0) << time; });
        EXPECT_FALSE(ReadChunks(t.opened(i), 1).empty()) << time;
      }
    }
  }
}

// A cluster whose start in nanoseconds lies beyond 64 bits (unchecked, the
// product would wrap to 0.45 ms) starts after any time asked for: both
// seeks land in the first cluster and read both.
TEST(SeekingTest, AClusterBeyondTheTimeRangeStartsAfterEverySeek) {
  const uint64_t beyond = 18446744073710;  // ticks of 1 ms
  OpenedTitle t(WriteAv({Cluster{0, {V(0, true), A(0)}}, Cluster{beyond, {V(0, true), A(0)}}}));
  for (size_t i = 0; i < 2; ++i) {
    KVL::StreamInterface* stream = t.opened(i);
    unsigned int actual = 1;
    StdoutOf([&] { EXPECT_EQ(stream->seekStream(1500, &actual, true), 0); });
    EXPECT_EQ(actual, i == 0 ? 0u : 1500u);
    EXPECT_EQ(ReadChunks(stream).size(), 2u) << i;
  }
}

// With the file shut under it, a seek that needs to read fails, and the
// next read ends the stream.
TEST(SeekingTest, ASeekThatCannotReadEndsTheStream) {
  OpenedTitle t(WriteAv({Cluster{0, {V(0, true), A(0)}}, Cluster{1000, {V(0, true), A(0)}}}));
  KVL::StreamInterface* audio = t.opened(1);
  t.source->close();
  unsigned int actual = 7;
  StdoutOf([&] { audio->seekStream(1500, &actual, true); });
  EXPECT_TRUE(ReadChunks(audio).empty());
  EXPECT_TRUE(audio->isEOS());
}

}  // namespace
}  // namespace mkvtest
