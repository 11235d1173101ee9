#include "reader/mkv_reader.h"

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "tests/support/temp_file.h"

namespace KVL {
namespace {

constexpr long kFileBytes = 3 * MkvReader::kWindowBytes + 1234;

// A file of `size` bytes whose byte i is (i * 7) & 0xFF.
std::string PatternFile(size_t size) {
  mkvtest::Bytes bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(i * 7);
  return mkvtest::WriteTemp(bytes, ".bin");
}

// Whether Read(position, length) succeeds with the file's bytes; with
// `keep`, how many leading bytes must be the file's even when it fails.
::testing::AssertionResult ReadsPattern(MkvReader& reader, long long position, long length,
                                        int result = 0, long keep = -1) {
  std::vector<unsigned char> buffer(length > 0 ? length : 1);
  const int got = reader.Read(position, length, buffer.data());
  if (got != result) return ::testing::AssertionFailure() << "result " << got;
  for (long i = 0; i < (keep < 0 && result == 0 ? length : keep); ++i) {
    if (buffer[i] != static_cast<unsigned char>((position + i) * 7))
      return ::testing::AssertionFailure() << "byte " << position + i;
  }
  return ::testing::AssertionSuccess();
}

class MkvReaderTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(0, reader_.Open(PatternFile(kFileBytes).c_str())); }
  MkvReader reader_;
};

// Reads of nothing, out of the file, across and larger than a window, past
// its end, and peeks forward and backward as the parser makes them. A read
// that runs past the end of the file fails but keeps what was there.
TEST_F(MkvReaderTest, ReadResults) {
  const struct {
    long long position;
    long length;
    int result;
  } cases[] = {{0, 0, 0},
               {kFileBytes + 10, 0, 0},
               {-1, 4, -1},
               {0, -1, -1},
               {kFileBytes, 1, -1},
               {0, 16, 0},
               {kFileBytes - 16, 16, 0},
               {MkvReader::kWindowBytes - 3, 6, 0},
               {1000, MkvReader::kWindowBytes + 5, 0},
               // Well past the window's end, longer than a short window, then on past it.
               {2 * MkvReader::kWindowBytes + 20000, 50000, 0},
               {2 * MkvReader::kWindowBytes + 60000, 20000, 0}};
  for (const auto& c : cases) {
    EXPECT_TRUE(ReadsPattern(reader_, c.position, c.length, c.result))
        << c.position << "+" << c.length;
  }
  EXPECT_TRUE(ReadsPattern(reader_, kFileBytes - 8, 32, -1, 8));
  long long position = 17;
  for (int i = 0; i < 2000; ++i) {
    position = (position * 1103515245 + 12345) % (kFileBytes - 64);
    ASSERT_TRUE(ReadsPattern(reader_, position, 1 + i % 64)) << position;
  }
}

// Open and Close move the reader between its two states, as often as
// wanted; a second Open keeps the first file.
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
  total = 42;
  EXPECT_TRUE(ReadsPattern(reader_, 0, 1, -1));
  EXPECT_TRUE(ReadsPattern(reader_, 0, 0, -1));
  EXPECT_EQ(-1, reader_.Length(&total, nullptr));
  EXPECT_EQ(42, total);
  EXPECT_EQ(-1, reader_.Open(nullptr));
  EXPECT_EQ(-1, reader_.Open("/nonexistent/file.mkv"));

  ASSERT_EQ(0, reader_.Open(other.c_str()));
  reader_.Length(&total, nullptr);
  EXPECT_EQ(100, total);
  EXPECT_TRUE(ReadsPattern(reader_, 90, 10));
}

// A file shrunk under an open reader: the missing bytes are a failed read,
// never stale or undefined ones.
TEST(MkvReader, FileCutWhileOpenFailsTheRead) {
  const std::string path = PatternFile(kFileBytes);
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  ASSERT_EQ(0, truncate(path.c_str(), 1000));
  EXPECT_TRUE(ReadsPattern(reader, 2000, 16, -1));
  EXPECT_TRUE(ReadsPattern(reader, 500, 5000, -1));
  EXPECT_TRUE(ReadsPattern(reader, 0, 16));
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
  unsigned char buffer[4];
  ASSERT_EQ(0, reader.Read(marker, 4, buffer));
  EXPECT_EQ("MKV!", std::string(buffer, buffer + 4));
  EXPECT_EQ(0, reader.Read(size - 4, 4, buffer));
  EXPECT_EQ(-1, reader.Read(size, 1, buffer));
}

}  // namespace
}  // namespace KVL
