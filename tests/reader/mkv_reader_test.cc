#include "reader/mkv_reader.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "tests/support/mkv_writer.h"
#include "tests/support/temp_file.h"

namespace KVL {
namespace {

constexpr long kWindow = MkvReader::kWindowBytes;
constexpr long kFileBytes = 3 * kWindow + 1234;

// A file of `size` bytes whose byte i is (i * 7) & 0xFF.
std::string PatternFile(size_t size) {
  mkvtest::Bytes bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(i * 7);
  return mkvtest::WriteTemp(bytes, ".bin");
}

// Whether Read(position, length) gives `result` and, if 0, the file's bytes.
::testing::AssertionResult ReadsPattern(MkvReader& reader, long long position, long length,
                                        int result = 0) {
  std::vector<unsigned char> buffer(length > 0 ? length : 1);
  const int got = reader.Read(position, length, buffer.data());
  if (got != result) return ::testing::AssertionFailure() << "result " << got;
  for (long i = 0; result == 0 && i < length; ++i) {
    if (buffer[i] != static_cast<unsigned char>((position + i) * 7))
      return ::testing::AssertionFailure() << "byte " << position + i;
  }
  return ::testing::AssertionSuccess();
}

// Reads of nothing, out of the file, across and larger than a window, past its end, well past
// the window's end, skips from one short window to the next, and on past a short window.
TEST(MkvReader, ReadResults) {
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(PatternFile(kFileBytes).c_str()));
  const struct {
    long long position;
    long length;
    int result;
  } cases[] = {{kFileBytes + 10, 0, 0}, {-1, 4, -1}, {0, -1, -1}, {kFileBytes, 1, -1},
               {kFileBytes - 8, 32, -1}, {kFileBytes - 16, 16, 0}, {kWindow - 3, 6, 0},
               {1000, kWindow + 5, 0}, {2 * kWindow + 20000, 50000, 0},
               {2 * kWindow + 90000, 4, 0}, {2 * kWindow + 90600, 4, 0},
               {2 * kWindow + 90850, 16, 0}, {2 * kWindow + 60000, 20000, 0}};
  for (const auto& c : cases) {
    EXPECT_TRUE(ReadsPattern(reader, c.position, c.length, c.result))
        << c.position << "+" << c.length;
  }
}

// A second Open keeps the first file; Close may come twice. A file shrunk under
// an open reader fails the reads of its missing bytes, never gives stale ones.
TEST(MkvReader, OpenCloseAndAFileCutWhileOpen) {
  const std::string path = PatternFile(kFileBytes), other = PatternFile(100);
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  EXPECT_EQ(-1, reader.Open(other.c_str()));
  long long total = 0, available = 0;
  EXPECT_EQ(0, reader.Length(nullptr, &available));
  EXPECT_EQ(0, reader.Length(&total, nullptr));
  EXPECT_EQ(kFileBytes, available);
  EXPECT_EQ(kFileBytes, total);
  reader.Close();
  reader.Close();
  EXPECT_TRUE(ReadsPattern(reader, 0, 1, -1));
  EXPECT_TRUE(ReadsPattern(reader, 0, 0, -1));
  EXPECT_EQ(-1, reader.Length(&total, &available));
  EXPECT_EQ(-1, reader.Open(nullptr));
  EXPECT_EQ(-1, reader.Open("/nonexistent/file.mkv"));
  ASSERT_EQ(0, reader.Open(other.c_str()));
  EXPECT_TRUE(ReadsPattern(reader, 90, 10));
  reader.Close();

  ASSERT_EQ(0, reader.Open(path.c_str()));
  std::filesystem::resize_file(path, 1000);
  EXPECT_TRUE(ReadsPattern(reader, 2000, 16, -1));
  EXPECT_TRUE(ReadsPattern(reader, 500, 5000, -1));
  EXPECT_TRUE(ReadsPattern(reader, 0, 16));
}

// Positions beyond 2 GiB, on a sparse file that takes no disk space.
TEST(MkvReader, ReadsBeyondTwoGigabytes) {
  const std::string path = PatternFile(0);
  const long long size = 3LL << 30, marker = (5LL << 29) + 3;
  std::filesystem::resize_file(path, size);
  std::fstream(path, std::ios::in | std::ios::out | std::ios::binary).seekp(marker) << "MKV!";
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  unsigned char buffer[4];
  ASSERT_EQ(0, reader.Read(marker, 4, buffer));
  EXPECT_EQ("MKV!", std::string(buffer, buffer + 4));
  EXPECT_EQ(0, reader.Read(size - 4, 4, buffer));
  EXPECT_EQ(-1, reader.Read(size, 1, buffer));
}

// The read calls and bytes of this process so far, as the kernel counts them.
struct ReadCount {
  long long calls = 0, bytes = 0;
};
ReadCount ReadsSoFar() {
  std::ifstream io("/proc/self/io");
  ReadCount count;
  std::string key;
  long long value = 0;
  while (io >> key >> value) {
    if (key == "syscr:") count.calls = value;
    if (key == "rchar:") count.bytes = value;
  }
  return count;
}
ReadCount operator-(ReadCount a, ReadCount b) { return {a.calls - b.calls, a.bytes - b.bytes}; }
// What taking a count reads itself: its own read and the end of file.
constexpr ReadCount kCountingSlack = {4, 4096};

constexpr int kClusters = 40;

// Clusters of one large frame, every fourth a short one of a few small
// frames, as muxers leave before a keyframe.
std::string ManyClusterFile() {
  mkvtest::MkvFile file{{mkvtest::VideoTrack(1), mkvtest::AudioTrack(2)}, {}, 1000000, {}};
  const mkvtest::Bytes video = mkvtest::Payload(40000), audio = mkvtest::Payload(300);
  for (int i = 0; i < kClusters; ++i) {
    mkvtest::Cluster cluster{static_cast<uint64_t>(i) * 1000, {}};
    if (i % 4 == 3) {
      for (int16_t t = 0; t < 1000; t += 100) cluster.blocks.push_back({2, t, true, {audio}});
    } else {
      cluster.blocks.push_back({1, 0, true, {video}});
    }
    file.clusters.push_back(std::move(cluster));
  }
  return mkvtest::WriteMkv(file);
}

// The parser's walk from cluster head to cluster head, as a probe makes it:
// past the first window, one short read a head, short clusters included.
TEST(MkvReader, ASkipFromHeadToHeadFetchesAFewHundredBytes) {
  const std::string path = ManyClusterFile();
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  const ReadCount before = ReadsSoFar();
  long long position = 0;
  mkvparser::EBMLHeader header;
  ASSERT_EQ(0, header.Parse(&reader, position));
  mkvparser::Segment* made = nullptr;
  ASSERT_EQ(0, mkvparser::Segment::CreateInstance(&reader, position, made));
  const std::unique_ptr<mkvparser::Segment> segment(made);
  ASSERT_EQ(0, segment->Load());
  const ReadCount used = ReadsSoFar() - before;
  ASSERT_EQ(kClusters, segment->GetCount());
  EXPECT_LE(used.calls, kClusters + kCountingSlack.calls);
  EXPECT_LE(used.bytes, kWindow + kClusters * 512 + kCountingSlack.bytes);
}

// Small reads one after the other, and stepping over frames of a few
// kilobytes as a cluster's walk does, cost one read call a window.
TEST(MkvReader, ASequentialWalkReadsAWindowAtATime) {
  const std::string path = ManyClusterFile();
  const auto size = static_cast<long long>(std::filesystem::file_size(path));
  const long long windows = size / (kWindow - 2 * 4096) + 1;
  for (const long step : {16L, 3000L, 15000L}) {
    MkvReader reader;
    ASSERT_EQ(0, reader.Open(path.c_str()));
    unsigned char buffer[16];
    const ReadCount before = ReadsSoFar();
    for (long long position = 0; position + 16 <= size; position += step) {
      ASSERT_EQ(0, reader.Read(position, 16, buffer)) << position;
    }
    const ReadCount used = ReadsSoFar() - before;
    EXPECT_LE(used.calls, windows + kCountingSlack.calls) << "step " << step;
    EXPECT_LE(used.bytes, windows * kWindow + kCountingSlack.bytes) << "step " << step;
  }
}

}  // namespace
}  // namespace KVL
