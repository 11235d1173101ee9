#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/source_harness.h"
#include "tests/support/unknown_sizes.h"

namespace mkvtest {
namespace {

// What a seek writes and gives; `actual` keeps 77 where the seek leaves it.
struct Seek {
  int result = 0;
  unsigned int actual = 77;
  std::string lines;
};
Seek SeekOf(KVL::StreamInterface* stream, unsigned int time, bool exact = true) {
  Seek seek;
  seek.lines = OutputOf(1, [&] { seek.result = stream->seekStream(time, &seek.actual, exact); });
  return seek;
}
// The start of the next chunk, or -1 at the end.
int64_t NextStart(KVL::StreamInterface* stream) {
  const std::vector<Chunk> chunks = ReadChunks(stream, 1);
  return chunks.empty() ? -1 : int64_t{chunks[0].start};
}

// The video reader lands on the cluster's first key block (an audio block in the
// sample) and goes on with the video frames from there; `before` lie earlier.
TEST(SeekingTest, VideoSeeksLandAtClusterStarts) {
  OpenedTitle t(MediaPath("sample"));
  KVL::StreamInterface* stream = t.opened(0);
  const std::vector<Chunk> all = ReadChunks(stream);
  ASSERT_EQ(all.size(), 125u);
  struct Case {
    unsigned int time, landing, before;
    size_t read;  // chunks to read after the seek; 200 reads to the end
  } cases[] = {{1500, 929, 25, 200}, {0, 23, 0, 5}, {0xFFFFFFFF, 3854, 98, 200}};
  for (const Case& c : cases) {
    const Seek seek = SeekOf(stream, c.time, c.time % 2 == 0);
    EXPECT_EQ(seek.result, 0);
    EXPECT_EQ(seek.actual, c.landing);
    EXPECT_EQ(seek.lines, "Reset Video Stream 0\nVideo Stream 0: seeked to " +
                              std::to_string(c.landing) +
                              " (requested time: " + std::to_string(c.time) + ")\n");
    EXPECT_FALSE(stream->isEOS());
    const size_t end = std::min(all.size(), c.before + c.read);
    EXPECT_EQ(ReadChunks(stream, c.read),
              std::vector<Chunk>(all.begin() + c.before, all.begin() + end))
        << c.time;
  }
}

Block V(int16_t time, bool key) { return Block{1, time, key, {Payload(4, time % 256)}}; }
Block A(int16_t time) { return Block{2, time, true, {Payload(3)}}; }

// The audio reader reports the time asked for (+1 when not exact) and goes on
// from the parser's entry, whose single frame counts as delivered. A sync point
// is the time asked for; a reset keeps the cursor at the end.
TEST(SeekingTest, AudioSeekReportsTheRequestedTime) {
  OpenedTitle t(
      WriteAv({Cluster{0, {V(0, true), A(0), A(500)}}, Cluster{1000, {V(0, true), A(0), A(500)}},
               Cluster{2000, {V(0, true), A(0), A(500)}}}));
  KVL::StreamInterface* stream = t.opened(1);
  struct Case {
    unsigned int time;
    bool exact;
    unsigned int reported;
    int64_t next;
  } cases[] = {{1600, true, 1600, 1000}, {1000, false, 1001, 1500}, {0, false, 1, 500},
               {9000, true, 9000, 2500}};
  for (const Case& c : cases) {
    const Seek seek = SeekOf(stream, c.time, c.exact);
    const std::string at = std::to_string(c.reported);
    EXPECT_EQ(seek.lines, "Reset Audio Stream 1\nAudio Stream 1: seeked to " + at +
                              " (requested time: " + at + ")\nAudio Stream 1: seeked/scanned to " +
                              at + " (requested time: " + at + ")\n");
    EXPECT_EQ(seek.result, 0);
    EXPECT_EQ(seek.actual, c.reported);
    EXPECT_EQ(NextStart(stream), c.next) << c.time;
  }
  EXPECT_EQ(stream->seekStream(100, nullptr, true), 0);
  EXPECT_EQ(ReadChunks(stream).size(), 5u);  // 500 to 2500
  EXPECT_EQ(OutputOf(1, [&] { EXPECT_EQ(stream->resetStream(), 0); }), "Reset Audio Stream 1\n");
  EXPECT_FALSE(stream->isEOS());
  EXPECT_EQ(NextStart(stream), -1);
  unsigned int point = 1;
  EXPECT_EQ(OutputOf(1, [&] { EXPECT_EQ(stream->getSyncPoint(0, 5000, &point), 0); }),
            "Audio Stream 1: got sync point 5000 from time 5000 (looking backward)\n");
  EXPECT_EQ(point, 5000u);
  EXPECT_EQ(OutputOf(1, [&] { EXPECT_EQ(stream->getSyncPoint(1, 0, &point), 0); }),
            "Audio Stream 1: assumed zero sync point\n");
  EXPECT_EQ(point, 0u);
  EXPECT_EQ(stream->getSyncPoint(1, 5, nullptr), int(0x80100001));
  long long result = 0;
  EXPECT_EQ(stream->scanStream(1234, &result), 0);
  EXPECT_EQ(result, 1234);
}

// Rows: time, where the video seek lands (-1: it fails, `actual` untouched), where
// video and audio go on (-1: the end). Layouts the parser's own track seek aborts on:
// a block before its cluster's start, clusters out of order; and a cluster start
// whose nanoseconds pass 64 bits (unchecked, it would wrap to 0.45 ms). Each file
// also with its sizes unknown.
TEST(SeekingTest, WhereReadingGoesOnAfterASeek) {
  struct Case {
    std::vector<Cluster> clusters;
    std::vector<std::vector<int64_t>> rows;
  } cases[] = {
      {{Cluster{0, {V(0, true), A(0)}},
        Cluster{1000, {V(0, false), A(10), V(20, true), V(60, false)}}},
       {{1050, 1000, 1020, 1010}}},
      {{Cluster{0, {V(0, true), A(0)}}, Cluster{1000, {A(0), V(10, false), V(20, true)}}},
       {{1050, 1000, 1010, 1000}}},
      {{Cluster{0, {V(0, false)}}, Cluster{1000, {V(0, false)}}}, {{500, -1, -1, -1}}},
      {{Cluster{100, {A(-100), V(0, true)}}, Cluster{1100, {V(0, true), A(0)}}},
       {{0, 100, 100, 0}, {99, 100, 100, 1100}, {1100, 1100, 1100, -1}}},
      {{Cluster{0, {V(0, true), A(0)}}, Cluster{2000, {V(0, true), A(0)}},
        Cluster{1000, {V(0, true), A(0)}}},
       {{0, 0, 0, 0}, {1500, 0, 0, 2000}, {2500, 1000, 1000, -1}}},
      {{Cluster{0, {V(0, true), A(0)}}, Cluster{18446744073710, {V(0, true), A(0)}}},
       {{1500, 0, 0, 0}}},
  };
  for (const Case& c : cases) for (bool unknown : {false, true}) {
    const Bytes bytes = Serialize(MkvFile{{VideoTrack(), AudioTrack()}, c.clusters});
    OpenedTitle t(WriteTemp(unknown ? WithUnknownSizes(bytes) : bytes));
    ASSERT_TRUE(t.ok);
    KVL::StreamInterface* video = t.opened(0);
    KVL::StreamInterface* audio = t.opened(1);
    for (const std::vector<int64_t>& row : c.rows) {
      SCOPED_TRACE(row[0]);
      const Seek seek = SeekOf(video, row[0]);
      EXPECT_EQ(seek.result, row[1] < 0 ? -1 : 0);
      EXPECT_EQ(int64_t{seek.actual}, row[1] < 0 ? 77 : row[1]);
      EXPECT_EQ(NextStart(video), row[2]);
      EXPECT_EQ(int64_t{SeekOf(audio, row[0]).actual}, row[0]);
      EXPECT_EQ(NextStart(audio), row[3]);
    }
  }
}

// With the file shut under it, a seek that must read fails and ends the stream.
TEST(SeekingTest, ASeekThatCannotReadEndsTheStream) {
  OpenedTitle t(WriteAv({Cluster{0, {V(0, true), A(0)}}, Cluster{1000, {V(0, true), A(0)}}}));
  KVL::StreamInterface* audio = t.opened(1);
  t.source->close();
  const Seek seek = SeekOf(audio, 1500);
  EXPECT_LT(seek.result, 0);
  EXPECT_EQ(seek.actual, 0u);
  EXPECT_EQ(NextStart(audio), -1);
  EXPECT_TRUE(audio->isEOS());
}

// A cluster whose Timecode element is hidden as a Void one, as a damaged file may
// have it: the probe still passes, every seek past the track's first block stops
// with the parser's status for the cluster's time (video: -1), and reading passes
// over the cluster.
TEST(SeekingTest, AClusterWithoutTimeStopsSeeksPastTheFirstBlock) {
  Bytes bytes = Serialize(MkvFile{
      {VideoTrack(), AudioTrack()},
      {Cluster{0, {V(0, true), A(0)}}, Cluster{1000, {V(0, true), A(0)}},
       Cluster{2000, {V(0, true), A(0)}}}});
  const Bytes timecode = {0xE7, 0x82, 0x03, 0xE8};  // 1000
  const auto at = std::search(bytes.begin(), bytes.end(), timecode.begin(), timecode.end());
  ASSERT_NE(at, bytes.end());
  *at = 0xEC;
  OpenedTitle t(WriteTemp(bytes));
  ASSERT_TRUE(t.ok);
  KVL::StreamInterface* video = t.opened(0);
  KVL::StreamInterface* audio = t.opened(1);
  EXPECT_EQ(ReadChunks(video).size(), 2u);
  for (unsigned int time : {500u, 2500u}) {
    EXPECT_EQ(SeekOf(video, time).result, -1);
    EXPECT_EQ(SeekOf(audio, time).result, mkvparser::E_FILE_FORMAT_INVALID);
  }
  EXPECT_EQ(SeekOf(video, 0).actual, 0u);
  EXPECT_EQ(SeekOf(audio, 0).actual, 0u);
  EXPECT_EQ(NextStart(audio), 0);
}

struct CountedBytes {
  Bytes bytes;
  size_t reads = 0;
};
// A title in memory whose reads are counted.
struct CountedTitle : CountedBytes, SourceHarness {
  explicit CountedTitle(std::vector<Cluster> clusters)
      : CountedBytes{Serialize(MkvFile{{VideoTrack(), AudioTrack()}, std::move(clusters)})},
        SourceHarness(new MemoryReader(bytes.data(), bytes.size(), &reads)),
        ok(Open("/counted.mkv")) {}
  // The reads of one seek of `stream`.
  size_t ReadsOfSeek(KVL::StreamInterface* stream, unsigned int time) {
    const size_t before = reads;
    SeekOf(stream, time);
    return reads - before;
  }
  const bool ok;
};

// Cluster times come from the probe's heads: a seek reads the cluster it lands in
// and no head on the way, so seeking far costs what seeking near does. A track
// whose first block comes late is searched for once.
TEST(SeekingTest, ASeekReadsOnlyWhereItLands) {
  constexpr unsigned int kClusters = 3000;
  std::vector<Cluster> clusters;
  for (unsigned int i = 0; i < kClusters; ++i) {
    clusters.push_back(Cluster{i * 1000ull, {V(0, true), V(500, false)}});
    if (i >= kClusters - 100) clusters.back().blocks.push_back(A(0));
  }
  CountedTitle t(clusters);
  ASSERT_TRUE(t.ok);
  KVL::StreamInterface* video = t.opened(0);
  KVL::StreamInterface* audio = t.opened(1);
  const size_t near = t.ReadsOfSeek(video, 10700);
  const size_t far = t.ReadsOfSeek(video, 2990700);
  EXPECT_GT(near, 0u);
  EXPECT_LE(far, near);
  EXPECT_EQ(NextStart(video), 2990000);
  EXPECT_GT(t.ReadsOfSeek(audio, 2950000), kClusters - 100);  // once, up to the first block
  EXPECT_LE(t.ReadsOfSeek(audio, 2960000), near);
  EXPECT_EQ(NextStart(audio), 2960000);
}

// A sparse track: a seek looks back through the clusters since the track's last
// block once; seeks after it, there or nearer that block, parse none of them again.
TEST(SeekingTest, ASparseTrackIsLookedBackThroughOnce) {
  constexpr unsigned int kClusters = 1200;
  std::vector<Cluster> clusters;
  for (unsigned int i = 0; i < kClusters; ++i) {
    clusters.push_back(Cluster{i * 1000ull, {V(0, true)}});
    if (i % 500 == 0) clusters.back().blocks.push_back(A(0));
  }
  CountedTitle t(clusters);
  ASSERT_TRUE(t.ok);
  KVL::StreamInterface* audio = t.opened(1);
  KVL::StreamInterface* video = t.opened(0);
  const size_t landing = t.ReadsOfSeek(video, 1000000);
  EXPECT_GT(t.ReadsOfSeek(audio, 1190000), 150u);
  for (unsigned int time : {1190000u, 1100000u, 1000500u})
    EXPECT_LE(t.ReadsOfSeek(audio, time), landing) << time;
  EXPECT_EQ(NextStart(audio), 1000000);
  EXPECT_GT(t.ReadsOfSeek(audio, 999000), 150u);  // clusters 501-999, not yet looked at
}

}  // namespace
}  // namespace mkvtest
