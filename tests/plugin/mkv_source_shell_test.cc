#include "plugin/mkv_source.h"

#include <string>

#include "gtest/gtest.h"
#include "plugin/interface_names.h"

namespace KVL {
namespace {

// Only the container and the inspector are reachable by name, exactly.
TEST(MKVSourceShell, AnswersOnlyTheContainerAndInspectorNames) {
  MKVSource source(nullptr);
  void* result = nullptr;
  ASSERT_EQ(0, source.getInterface(vorq_string<char>("com.vorq.streamengine.interface.container"),
                                   &result));
  EXPECT_EQ(static_cast<ContainerInterface*>(&source), result);
  ASSERT_EQ(0, source.getInterface(kFileInspectorInterfaceName, &result));
  EXPECT_EQ(static_cast<FileInspectorInterface*>(&source), result);

  const char* unknown[] = {"com.vorq.streamengine.interface.media",
                           "com.vorq.playback.interface.BasicPlayback",
                           "com.vorq.streamengine.component.output.multiple",
                           "COM.VORQ.STREAMENGINE.INTERFACE.CONTAINER",
                           "com.vorq.streamengine.interface.container ",
                           "",
                           nullptr};
  for (const char* name : unknown) {
    result = &source;
    EXPECT_EQ(3, source.getInterface(vorq_string<char>(name), &result)) << (name ? name : "null");
    EXPECT_EQ(nullptr, result);
  }
  EXPECT_EQ(3, source.getInterface(kContainerInterfaceName, nullptr));
  EXPECT_STREQ("com.vorq.streamengine.interface.media", kMediaInterfaceName.data());
  EXPECT_STREQ("com.vorq.streamengine.component.output.multiple",
               kMultipleOutputComponentName.data());
}

TEST(MKVSourceShell, PublishesTheMatroskaMimeTypeAndStoresInit) {
  MKVSource source(nullptr);
  const auto& types = source.supportedMimeTypes();
  ASSERT_EQ(1u, types.size());
  EXPECT_STREQ("video/x-matroska", reinterpret_cast<const char*>(types.begin()->first.data()));
  EXPECT_EQ(1u, types.begin()->second);
  source.init(nullptr, 77);
  EXPECT_EQ(77u, source.containerUID());
  EXPECT_EQ(nullptr, source.metadataDocument());
}

// A reader that counts its closes and its deletion.
class TracedReader : public IMkvReader {
 public:
  explicit TracedReader(int* deletions) : deletions_(deletions) {}
  ~TracedReader() override { ++*deletions_; }
  int Open(const char*) override { return -1; }
  void Close() override { ++closes; }
  int Read(long long, long, unsigned char*) override { return -1; }
  int Length(long long*, long long*) override { return -1; }
  int closes = 0;

 private:
  int* deletions_;
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
