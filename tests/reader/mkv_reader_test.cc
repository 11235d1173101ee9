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

long long Total(MkvReader& reader, int result = 0) {
  long long total = 42;
  EXPECT_EQ(result, reader.Length(&total, nullptr));
  return total;
}

// Reads of nothing, out of the file, across and larger than a window, past its
// end, and peeks forward and backward as the parser makes them.
TEST(MkvReader, ReadResults) {
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(PatternFile(kFileBytes).c_str()));
  const struct {
    long long position;
    long length;
    int result;
  } cases[] = {{0, 0, 0}, {kFileBytes + 10, 0, 0}, {-1, 4, -1}, {0, -1, -1}, {kFileBytes, 1, -1},
               {kFileBytes - 8, 32, -1}, {kFileBytes - 16, 16, 0},
               {MkvReader::kWindowBytes - 3, 6, 0}, {1000, MkvReader::kWindowBytes + 5, 0},
               // Well past the window's end, longer than a short window, then on past it.
               {2 * MkvReader::kWindowBytes + 20000, 50000, 0},
               {2 * MkvReader::kWindowBytes + 60000, 20000, 0}};
  for (const auto& c : cases) {
    EXPECT_TRUE(ReadsPattern(reader, c.position, c.length, c.result))
        << c.position << "+" << c.length;
  }
  long long position = 17;
  for (int i = 0; i < 2000; ++i) {
    position = (position * 1103515245 + 12345) % (kFileBytes - 64);
    ASSERT_TRUE(ReadsPattern(reader, position, 1 + i % 64)) << position;
  }
}

// A second Open keeps the first file; Close may come twice. A file shrunk under
// an open reader fails the reads of its missing bytes, never gives stale ones.
TEST(MkvReader, OpenCloseAndAFileCutWhileOpen) {
  const std::string path = PatternFile(kFileBytes), other = PatternFile(100);
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  EXPECT_EQ(-1, reader.Open(other.c_str()));
  long long available = 0;
  EXPECT_EQ(0, reader.Length(nullptr, &available));
  EXPECT_EQ(kFileBytes, available);
  EXPECT_EQ(kFileBytes, Total(reader));
  reader.Close();
  reader.Close();
  EXPECT_TRUE(ReadsPattern(reader, 0, 1, -1));
  EXPECT_TRUE(ReadsPattern(reader, 0, 0, -1));
  EXPECT_EQ(42, Total(reader, -1));
  EXPECT_EQ(-1, reader.Open(nullptr));
  EXPECT_EQ(-1, reader.Open("/nonexistent/file.mkv"));
  ASSERT_EQ(0, reader.Open(other.c_str()));
  EXPECT_EQ(100, Total(reader));
  EXPECT_TRUE(ReadsPattern(reader, 90, 10));
  reader.Close();

  ASSERT_EQ(0, reader.Open(path.c_str()));
  ASSERT_EQ(0, truncate(path.c_str(), 1000));
  EXPECT_TRUE(ReadsPattern(reader, 2000, 16, -1));
  EXPECT_TRUE(ReadsPattern(reader, 500, 5000, -1));
  EXPECT_TRUE(ReadsPattern(reader, 0, 16));
}

// Positions beyond 2 GiB, on a sparse file that takes no disk space.
TEST(MkvReader, ReadsBeyondTwoGigabytes) {
  const std::string path = mkvtest::NewTempPath(".bin");
  const long long size = 3LL << 30, marker = (5LL << 29) + 3;
  const int fd = ::open(path.c_str(), O_CREAT | O_WRONLY, 0600);
  ASSERT_EQ(0, ftruncate(fd, size));
  ASSERT_EQ(4, pwrite(fd, "MKV!", 4, marker));
  ::close(fd);
  MkvReader reader;
  ASSERT_EQ(0, reader.Open(path.c_str()));
  EXPECT_EQ(size, Total(reader));
  unsigned char buffer[4];
  ASSERT_EQ(0, reader.Read(marker, 4, buffer));
  EXPECT_EQ("MKV!", std::string(buffer, buffer + 4));
  EXPECT_EQ(0, reader.Read(size - 4, 4, buffer));
  EXPECT_EQ(-1, reader.Read(size, 1, buffer));
}

}  // namespace
}  // namespace KVL
