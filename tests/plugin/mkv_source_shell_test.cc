#include "gtest/gtest.h"
#include "plugin/mkv_source.h"

namespace KVL {
namespace {

// Only the container and the inspector are reachable, by their exact names.
TEST(MKVSourceShell, AnswersTheContainerAndInspectorNamesAndOneMimeType) {
  MKVSource source(nullptr);
  const struct {
    const char* name;
    void* expected;
  } cases[] = {
      {"com.vorq.streamengine.interface.container", static_cast<ContainerInterface*>(&source)},
      {"com.vorq.streamengine.interface.fileInspector",
       static_cast<FileInspectorInterface*>(&source)},
      {"com.vorq.streamengine.interface.container ", nullptr},
      {nullptr, nullptr}};
  for (const auto& c : cases) {
    void* result = &source;
    EXPECT_EQ(c.expected ? 0 : 3, source.getInterface(vorq_string<char>(c.name), &result));
    EXPECT_EQ(c.expected, result);
  }
  EXPECT_EQ(3, source.getInterface(vorq_string<char>(cases[0].name), nullptr));
}

struct TracedReader : IMkvReader {
  explicit TracedReader(int* deletions) : deletions(deletions) {}
  ~TracedReader() override { ++*deletions; }
  int Open(const char*) override { return -1; }
  void Close() override { ++closes; }
  int Read(long long, long, unsigned char*) override { return -1; }
  int Length(long long*, long long*) override { return -1; }
  int* deletions;
  int closes = 0;
};

// The second constructor owns its reader; an object never opened closes
// and ends without harm, through the engine's reference count.
TEST(MKVSourceShell, OwnsItsReaderAndEndsAtTheLastRelease) {
  int deletions = 0;
  auto* reader = new TracedReader(&deletions);
  Plugin* plugin = new MKVSource(nullptr, reader);
  EXPECT_EQ(0, static_cast<MKVSource*>(plugin)->close());
  EXPECT_EQ(1, reader->closes);
  EXPECT_EQ(2, plugin->retain());
  EXPECT_EQ(1, plugin->release());
  EXPECT_EQ(0, deletions);
  EXPECT_EQ(0, plugin->release());
  EXPECT_EQ(1, deletions);
}

}  // namespace
}  // namespace KVL
