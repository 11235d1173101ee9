#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"
#include "tests/support/unknown_sizes.h"

namespace mkvtest {
namespace {

// Video track 1 (41.7 ms a frame) and audio track 2 (no default duration),
// with laced audio, a non-key frame and a block of a track that doesn't exist.
MkvFile MixedFile() {
  MkvFile file{{VideoTrack(), AudioTrack()}, {}};
  file.tracks[0].default_duration = 41708333;
  file.clusters = {
      Cluster{0,
              {{1, 0, true, {Payload(100, 1)}},
               {2, 0, true, {Payload(10, 2), Payload(10, 3), Payload(10, 4)}},
               {9, 5, true, {Payload(7, 5)}},
               {1, 40, false, {Payload(50, 6)}}}},
      Cluster{2000,
              {{2, -3, true, {Payload(30, 7), Payload(30, 8)}},
               {1, 40, true, {Payload(60, 9)}},
               {2, 30, true, {Payload(8, 10), Payload(8, 11), Payload(8, 12)}}}}};
  return file;
}

// Laced frames each make a chunk with the block's time; durations are cut to whole
// ticks; the end repeats.
TEST(ReadPathTest, ChunksAreTheFilesFramesOfTheTrack) {
  const MkvFile file = MixedFile();
  OpenedTitle t(WriteMkv(file));
  ASSERT_TRUE(t.ok);
  for (uint64_t track : {1, 2}) {
    std::vector<Chunk> expected;
    for (const Cluster& cluster : file.clusters) {
      for (const Block& block : cluster.blocks) {
        for (const Bytes& frame : block.frames) {
          if (block.track != track) continue;
          expected.push_back({static_cast<uint32_t>(cluster.time + block.time),
                              track == 1 ? 41u : 0u, std::string(frame.begin(), frame.end())});
        }
      }
    }
    KVL::StreamInterface* stream = t.opened(track - 1);
    int last = -1;
    EXPECT_EQ(ReadChunks(stream, SIZE_MAX, &last), expected);
    EXPECT_EQ(stream->getLastChunkTime(), expected.back().start + expected.back().duration);
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(last, 0);
      EXPECT_TRUE(stream->isEOS());
      EXPECT_TRUE(ReadChunks(stream, 1, &last).empty());
    }
  }
}

// A negative speed delivers one frame per seek, until the mode is set back.
TEST(ReadPathTest, SpeedAndModeGateReading) {
  OpenedTitle t(WriteMkv(MixedFile()));
  KVL::StreamInterface* stream = t.opened(0);
  EXPECT_TRUE(stream->setReadSpeed(-1000));
  EXPECT_FALSE(stream->setReadMode(KVL::kReadSequential));
  int last = 0;
  EXPECT_EQ(stream->seekStream(0, nullptr, true), 0);
  EXPECT_EQ(ReadChunks(stream, SIZE_MAX, &last).size(), 1u);
  EXPECT_EQ(last, -8);  // a block went out already
  EXPECT_TRUE(stream->setReadSpeed(1000));
  EXPECT_TRUE(stream->setReadSpeed(1000));  // the present speed: nothing changes
  EXPECT_EQ(stream->readMode(), KVL::kReadOnePerSeek);
  EXPECT_TRUE(stream->setReadMode(KVL::kReadSequential));
  EXPECT_EQ(ReadChunks(stream).size(), 2u);
  EXPECT_TRUE(stream->setReadSpeed(0));  // a pause is no negative speed
  EXPECT_EQ(stream->readMode(), KVL::kReadSequential);
  EXPECT_EQ(stream->readStream(nullptr), 0);
}

// Bytes that can't be read (a file cut after the probe, a stream never opened) end
// the stream; nothing half-read goes out.
TEST(ReadPathTest, UnreadableFrameEndsTheStream) {
  const Bytes bytes = Serialize(MixedFile());
  const std::string path = WriteTemp(bytes);
  OpenedTitle cut(path);
  const Bytes lastVideo = Payload(60, 9);
  const auto at = std::find_end(bytes.begin(), bytes.end(), lastVideo.begin(), lastVideo.end());
  ASSERT_EQ(truncate(path.c_str(), at - bytes.begin() + 1), 0);
  KVL::StreamInterface* stream = cut.opened(0);
  int last = -1;
  EXPECT_EQ(ReadChunks(stream, SIZE_MAX, &last).size(), 2u);
  EXPECT_EQ(last, 0);
  EXPECT_TRUE(stream->isEOS());
  EXPECT_TRUE(ReadChunks(cut.control.stream(1)).empty());
}

// A committed file with its segment's and clusters' sizes unknown, as a live
// muxer writes it, plays the frames ffprobe lists for it, the same as the file.
TEST(ReadPathTest, UnknownSizesPlayTheSameFrames) {
  for (const char* name : {"h264_aac", "h264_mp3_laced", "hevc_mp3", "mpeg4_aac", "sample"}) {
    SCOPED_TRACE(name);
    std::ifstream in(MediaPath(name), std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(in), {}};
    OpenedTitle written(MediaPath(name));
    OpenedTitle unknown(WriteTemp(WithUnknownSizes(bytes)));
    ASSERT_TRUE(written.ok && unknown.ok);
    const std::vector<CsvRow> packets = ReadFacts(name, "packets");
    for (size_t stream = 0; stream < 2; ++stream) {
      std::vector<size_t> listed;
      for (const CsvRow& packet : packets)
        if (packet[0] == std::to_string(stream)) listed.push_back(std::stoul(packet[2]));
      const std::vector<Chunk> chunks = ReadChunks(unknown.opened(stream));
      std::vector<size_t> sizes;
      for (const Chunk& chunk : chunks) sizes.push_back(chunk.bytes.size());
      EXPECT_EQ(sizes, listed);
      EXPECT_EQ(chunks, ReadChunks(written.opened(stream)));
    }
  }
}

}  // namespace
}  // namespace mkvtest
