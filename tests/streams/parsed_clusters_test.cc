#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "streams/parsed_clusters.h"
#include "tests/support/source_harness.h"
#include "tests/support/unknown_sizes.h"

namespace mkvtest {
namespace {

constexpr uint64_t kClusters = 150;
// Both readers' clusters, and the few that the cache keeps once let go.
constexpr size_t kBound = 2 + KVL::ParsedClusters::kKeptUnheld;

// Clusters a second apart, each opening with a key frame: a video and an
// audio block at 0 and at 500 ms; their sizes written, or unknown as live
// muxers write them.
struct Title : OpenedTitle {
  explicit Title(bool unknownSizes) : OpenedTitle(WriteTemp(FileBytes(unknownSizes))) {}
  static Bytes FileBytes(bool unknownSizes) {
    const Bytes bytes = Serialize(MkvFile{{VideoTrack(), AudioTrack()}, ManyClusters()});
    return unknownSizes ? WithUnknownSizes(bytes) : bytes;
  }
  static std::vector<Cluster> ManyClusters() {
    std::vector<Cluster> clusters;
    for (uint64_t i = 0; i < kClusters; ++i) {
      const auto seed = static_cast<uint8_t>(i);
      clusters.push_back(Cluster{i * 1000,
                                 {{1, 0, true, {Payload(6, seed)}},
                                  {2, 0, true, {Payload(3, seed)}},
                                  {1, 500, false, {Payload(5, seed)}},
                                  {2, 500, true, {Payload(2, seed)}}}});
    }
    return clusters;
  }
  // Reads one chunk of `stream` and notes how many clusters are parsed.
  bool Read(KVL::StreamInterface* stream) {
    const bool read = !ReadChunks(stream, 1).empty();
    most = std::max(most, source->parsedClusters());
    return read;
  }
  size_t most = 0;
};

// The readers play side by side, earliest first as an engine paces them; the
// video reader alone while the audio reader stays in the first cluster; both
// seek back and forth over the whole file, each seek followed by a few reads.
// The probe leaves no cluster in the segment, whatever the sizes.
// Once the title closes, the few kept clusters stay, and the audio reader's
// last, which it let go without the lock.
class ParsedClustersTest : public testing::TestWithParam<bool> {};

TEST_P(ParsedClustersTest, ReadersHoldABoundedNumber) {
  Title t(GetParam());
  ASSERT_TRUE(t.ok);
  EXPECT_EQ(t.source->parsedClusters(), 0u);
  KVL::StreamInterface* video = t.opened(0);
  KVL::StreamInterface* audio = t.opened(1);
  size_t chunks = 0;
  while (!video->isEOS() || !audio->isEOS()) {
    const bool videoFirst = !video->isEOS() && (audio->isEOS() || video->getLastChunkTime() <=
                                                                      audio->getLastChunkTime());
    chunks += t.Read(videoFirst ? video : audio);
  }
  EXPECT_EQ(chunks, 4 * kClusters);
  EXPECT_GT(t.most, 0u);
  video->openStream(nullptr);
  audio->openStream(nullptr);
  ASSERT_TRUE(t.Read(audio));
  while (t.Read(video)) {
  }
  EXPECT_EQ(video->getLastChunkTime(), (kClusters - 1) * 1000 + 500);
  for (unsigned int i = 0; i < 60; ++i) {
    const unsigned int time = (i % 2 ? i : kClusters - 1 - i) * 1000 + 700;
    unsigned int landing = 0;
    ASSERT_EQ(video->seekStream(time, &landing, true), 0);
    EXPECT_EQ(landing, time / 1000 * 1000);
    ASSERT_EQ(audio->seekStream(time, &landing, false), 0);
    for (int read = 0; read < 3; ++read) t.Read(read % 2 ? audio : video);
  }
  EXPECT_LE(t.most, kBound);
  EXPECT_EQ(t.source->closeTitle(false), 0);
  EXPECT_EQ(t.source->parsedClusters(), KVL::ParsedClusters::kKeptUnheld + 1);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ParsedClustersTest, testing::Values(false, true),
                         [](const auto& info) { return info.param ? "Unknown" : "Written"; });

}  // namespace
}  // namespace mkvtest
