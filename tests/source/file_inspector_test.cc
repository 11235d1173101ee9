#include <unistd.h>

#include <new>

#include "runtime/memory/vorq_mem.h"
#include "runtime/text/vorq_string.h"
#include "tests/support/source_harness.h"
#include "tests/support/temp_file.h"

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
  unsigned long long untouched = 7;  // the other queries answer 0 and write nothing
  EXPECT_EQ(0, source->closeFile() + source->getDuration(0, untouched) +
                   source->getFileSize(&untouched));
  EXPECT_EQ(-1, source->getFileSize(nullptr));
  EXPECT_EQ(7u, untouched);
  EXPECT_EQ(1234u, Size());  // closeFile keeps the file
  EXPECT_EQ(0u, OpenFile("FILE://" + WriteTemp(Bytes(10, 1))));
  for (const char* bad : {"/tmp/bare.mkv", "http://example.invalid/a.mkv"}) {
    EXPECT_EQ(0x80800001u, OpenFile(bad)) << bad;
  }
  EXPECT_EQ(10u, Size());
  EXPECT_EQ(0u, OpenFile(FileUri(path)));
  ASSERT_EQ(0, unlink(path.c_str()));
  EXPECT_EQ(42u, Size(42));
}

// The inspector keeps its path as runtime text: a path one byte longer than
// the runtime's allocator gives throws, one that fits exactly is taken.
TEST(InspectorPathText, APathOneByteTooLongForTheRuntimeThrows) {
  const std::string file = WriteTemp(Bytes(1234, 1));
  const size_t slash = file.rfind('/');
  // `file` under a name of `length` bytes; the extra slashes name the same file.
  const auto Named = [&](size_t length) {
    return SourceOf(FileUri(file.substr(0, slash) + std::string(length - file.size(), '/') +
                            file.substr(slash)));
  };
  const MemoryHandle arena = VorQMemInit(512);
  VorQStringMemSet(arena);
  {
    KVL::MKVSource inspector(nullptr);
    EXPECT_EQ(0u, inspector.openFile(Named(file.size())->getUri()));
    uint32_t room = 1;  // the most bytes of text the arena has left
    while (VorQString* block = VorQStringAllocate(room + 1)) {
      VorQStringDeallocate(block);
      ++room;
    }
    EXPECT_THROW(inspector.openFile(Named(room)->getUri()), std::bad_alloc);
    EXPECT_EQ(0u, inspector.openFile(Named(room - 1)->getUri()));
    unsigned long long size = 0;
    EXPECT_EQ(0, inspector.getSize(size));
    EXPECT_EQ(1234u, size);
  }
  EXPECT_EQ(0u, reinterpret_cast<const MemoryArena*>(arena)->entry_count);  // all blocks back
  VorQStringMemSet(0);
  VorQMemDeInit(arena);
}

}  // namespace
}  // namespace mkvtest
