#include "reader/mkv_reader.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "tests/support/mkv_writer.h"
#include "tests/support/temp_file.h"

namespace KVL {
namespace {

using mkvtest::Bytes;

// A file of `size` bytes whose byte i is (i * 7) & 0xFF.
std::string PatternFile(size_t size) {
  Bytes bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(i * 7);
  return mkvtest::WriteTemp(bytes, ".bin");
}

bool MatchesPattern(const unsigned char* data, long long position, long length) {
  for (long i = 0; i < length; ++i) {
    if (data[i] != static_cast<unsigned char>((position + i) * 7)) return false;
  }
  return true;
}

constexpr long kFileBytes = 3 * MkvReader::kWindowBytes + 1234;

class MkvReaderTest : public testing::Test {
 protected:
  void SetUp() override {
    path_ = PatternFile(kFileBytes);
    ASSERT_EQ(0, reader_.Open(path_.c_str()));
  }
  std::string path_;
  MkvReader reader_;
};

struct ReadCase {
  long long position;
  long length;
  int result;
};

TEST_F(MkvReaderTest, ReadResults) {
  const ReadCase cases[] = {
      {0, 0, 0},                       // nothing asked
      {kFileBytes + 10, 0, 0},         // nothing asked, even past the end
      {-1, 4, -1},                     // negative position
      {0, -1, -1},                     // negative length
      {kFileBytes, 1, -1},             // at the end
      {kFileBytes - 4, 8, -1},         // runs past the end
      {0, 16, 0},
      {kFileBytes - 16, 16, 0},        // last bytes
      {MkvReader::kWindowBytes - 3, 6, 0},  // across a window border
      {1000, MkvReader::kWindowBytes + 5, 0},  // larger than a window
  };
  for (const ReadCase& c : cases) {
    std::vector<unsigned char> buffer(c.length > 0 ? c.length : 1);
    EXPECT_EQ(c.result, reader_.Read(c.position, c.length, buffer.data()))
        << c.position << "+" << c.length;
    if (c.result == 0 && c.length > 0) {
      EXPECT_TRUE(MatchesPattern(buffer.data(), c.position, c.length));
    }
  }
}

// A read that runs past the end fails but keeps what was there.
TEST_F(MkvReaderTest, ShortReadKeepsTheBytesUpToTheEnd) {
  std::vector<unsigned char> buffer(32, 0);
  EXPECT_EQ(-1, reader_.Read(kFileBytes - 8, 32, buffer.data()));
  EXPECT_TRUE(MatchesPattern(buffer.data(), kFileBytes - 8, 8));
}

// The parser peeks forward and backward; every answer must be the file's.
TEST_F(MkvReaderTest, PeeksInAnyOrderGiveTheFileBytes) {
  unsigned char buffer[64];
  long long position = 17;
  for (int i = 0; i < 2000; ++i) {
    position = (position * 1103515245 + 12345) % (kFileBytes - 64);
    const long length = 1 + (i % 64);
    ASSERT_EQ(0, reader_.Read(position, length, buffer));
    ASSERT_TRUE(MatchesPattern(buffer, position, length)) << position;
  }
}

// Open and Close move the reader between its two states, as often as wanted;
// a second Open keeps the first file.
TEST_F(MkvReaderTest, OpenAndCloseRules) {
  const std::string other = PatternFile(100);
  long long total = 0, available = 0;
  EXPECT_EQ(-1, reader_.Open(other.c_str()));
  EXPECT_EQ(0, reader_.Length(&total, &available));
  EXPECT_EQ(kFileBytes, total);
  EXPECT_EQ(kFileBytes, available);
  EXPECT_EQ(0, reader_.Length(nullptr, nullptr));

  reader_.Close();
  reader_.Close();
  unsigned char byte;
  total = 42;
  EXPECT_EQ(-1, reader_.Read(0, 1, &byte));
  EXPECT_EQ(-1, reader_.Read(0, 0, &byte));
  EXPECT_EQ(-1, reader_.Length(&total, nullptr));
  EXPECT_EQ(42, total);
  EXPECT_EQ(-1, reader_.Open(nullptr));
  EXPECT_EQ(-1, reader_.Open("/nonexistent/file.mkv"));

  ASSERT_EQ(0, reader_.Open(other.c_str()));
  reader_.Length(&total, nullptr);
  EXPECT_EQ(100, total);
  unsigned char buffer[10];
  EXPECT_EQ(0, reader_.Read(90, 10, buffer));
  EXPECT_TRUE(MatchesPattern(buffer, 90, 10));
}

// A file shrunk under an open reader: the missing bytes are a failed read,
// never stale or undefined ones.
TEST(MkvReader, FileCutWhileOpenFailsTheRead) {
  const std::string path = PatternFile(kFileBytes);
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  ASSERT_EQ(0, truncate(path.c_str(), 1000));
  std::vector<unsigned char> buffer(5000);
  EXPECT_EQ(-1, reader.Read(2000, 16, buffer.data()));
  EXPECT_EQ(-1, reader.Read(500, 5000, buffer.data()));
  EXPECT_EQ(0, reader.Read(0, 16, buffer.data()));
}

// Positions beyond 2 GiB, on a sparse file that takes no disk space.
TEST(MkvReader, ReadsBeyondTwoGigabytes) {
  const std::string path = mkvtest::NewTempPath(".bin");
  const long long size = 3LL << 30;
  const long long marker = (5LL << 29) + 3;
  const int fd = ::open(path.c_str(), O_CREAT | O_WRONLY, 0600);
  ASSERT_GE(fd, 0);
  ASSERT_EQ(0, ftruncate(fd, size));
  ASSERT_EQ(4, pwrite(fd, "MKV!", 4, marker));
  ::close(fd);

  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  long long total = 0;
  reader.Length(&total, nullptr);
  EXPECT_EQ(size, total);
  char buffer[4];
  ASSERT_EQ(0, reader.Read(marker, 4, reinterpret_cast<unsigned char*>(buffer)));
  EXPECT_EQ(std::string("MKV!"), std::string(buffer, 4));
  EXPECT_EQ(0, reader.Read(size - 4, 4, reinterpret_cast<unsigned char*>(buffer)));
  EXPECT_EQ(-1, reader.Read(size, 1, reinterpret_cast<unsigned char*>(buffer)));
}

}  // namespace
}  // namespace KVL
