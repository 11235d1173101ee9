#include <unistd.h>

#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

KVL::vorq_string<unsigned char> Uri(const std::string& text) {
  return KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(text.c_str()));
}

class InspectorTest : public SourceTest {};

TEST_F(InspectorTest, SizeBeforeAnyFileIsZero) {
  unsigned long long size = 99;
  EXPECT_EQ(0, source->getSize(size));
  EXPECT_EQ(0u, size);
}

TEST_F(InspectorTest, ReportsTheSizeOfTheFileNamedByUri) {
  const std::string path = WriteTemp(Bytes(1234, 1));
  EXPECT_EQ(0u, source->openFile(Uri(FileUri(path))));
  EXPECT_EQ(0u, source->openFile(Uri(FileUri(path))));
  unsigned long long size = 0;
  EXPECT_EQ(0, source->getSize(size));
  EXPECT_EQ(1234u, size);

  const std::string other = WriteTemp(Bytes(10, 1));
  EXPECT_EQ(0u, source->openFile(Uri("FILE://" + other)));
  EXPECT_EQ(0, source->getSize(size));
  EXPECT_EQ(10u, size);
  EXPECT_EQ(0, source->closeFile());
  EXPECT_EQ(0, source->getSize(size));
  EXPECT_EQ(10u, size);
}

TEST_F(InspectorTest, RefusesWhatIsNotAFileUriAndKeepsTheFile) {
  const std::string path = WriteTemp(Bytes(77, 1));
  ASSERT_EQ(0u, source->openFile(Uri(FileUri(path))));
  for (const char* bad : {"", "/tmp/bare.mkv", "http://example.invalid/a.mkv", "file:"}) {
    EXPECT_EQ(0x80800001u, source->openFile(Uri(bad))) << bad;
  }
  EXPECT_EQ(0x80800001u, source->openFile(KVL::vorq_string<unsigned char>()));
  unsigned long long size = 0;
  source->getSize(size);
  EXPECT_EQ(77u, size);
}

TEST_F(InspectorTest, AMissingFileKeepsTheCallersValue) {
  const std::string path = WriteTemp(Bytes(5, 1));
  ASSERT_EQ(0u, source->openFile(Uri(FileUri(path))));
  ASSERT_EQ(0, unlink(path.c_str()));
  unsigned long long size = 42;
  EXPECT_EQ(0, source->getSize(size));
  EXPECT_EQ(42u, size);
}

TEST_F(InspectorTest, PlayingSideQueriesReportNothing) {
  unsigned long long value = 42;
  EXPECT_EQ(-1, source->getFileSize(nullptr));
  EXPECT_EQ(0, source->getFileSize(&value));
  EXPECT_EQ(0, source->getDuration(0, value));
  EXPECT_EQ(42u, value);
  EXPECT_EQ(0, source->getBufferingProgress());
}

}  // namespace
}  // namespace mkvtest
