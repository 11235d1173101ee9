#include <unistd.h>

#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using InspectorTest = SourceTest;

// The size of the file last named by a file URI; before any, 0. Other URIs
// are refused and keep the file; a missing file keeps the caller's value.
TEST_F(InspectorTest, ReportsTheSizeOfTheFileNamedByUri) {
  const auto OpenFile = [&](const std::string& uri) {
    return source->openFile(SourceOf(uri)->getUri());
  };
  // getSize's answer, or `before` where it leaves the value alone.
  const auto Size = [&](unsigned long long before = 99) {
    EXPECT_EQ(0, source->getSize(before));
    return before;
  };
  EXPECT_EQ(0u, Size());
  const std::string path = WriteTemp(Bytes(1234, 1));
  EXPECT_EQ(0u, OpenFile(FileUri(path)) + OpenFile(FileUri(path)));
  EXPECT_EQ(1234u, Size());
  EXPECT_EQ(0u, OpenFile("FILE://" + WriteTemp(Bytes(10, 1))));
  for (const char* bad : {"/tmp/bare.mkv", "http://example.invalid/a.mkv"}) {
    EXPECT_EQ(0x80800001u, OpenFile(bad)) << bad;
  }
  EXPECT_EQ(10u, Size());
  EXPECT_EQ(0u, OpenFile(FileUri(path)));
  ASSERT_EQ(0, unlink(path.c_str()));
  EXPECT_EQ(42u, Size(42));
}

}  // namespace
}  // namespace mkvtest
