#include "plugin/mkv_source.h"

#include <string>

#include "gtest/gtest.h"
#include "plugin/interface_names.h"

namespace KVL {
namespace {

TEST(MKVSourceShell, GivesOutTheContainerAndInspectorParts) {
  MKVSource source(nullptr);
  void* result = &source;
  ASSERT_EQ(0, source.getInterface(kContainerInterfaceName, &result));
  EXPECT_EQ(static_cast<ContainerInterface*>(&source), result);
  ASSERT_EQ(0, source.getInterface(vorq_string<char>("com.vorq.streamengine.interface.fileInspector"),
                                   &result));
  EXPECT_EQ(static_cast<FileInspectorInterface*>(&source), result);
}

TEST(MKVSourceShell, EveryOtherNameIsUnknown) {
  const vorq_string<char>* others[] = {
      &kMediaInterfaceName,         &kBasicPlaybackInterfaceName, &kComponentInterfaceName,
      &kInputComponentName,         &kInputInterfaceName,         &kSingleOutputComponentName,
      &kMultipleOutputComponentName, &kOutputComponentName,       &kOutputInterfaceName};
  const char* texts[] = {"", "COM.VORQ.STREAMENGINE.INTERFACE.CONTAINER",
                         "com.vorq.streamengine.interface.Container",
                         "com.vorq.streamengine.interface.container ", nullptr};
  MKVSource source(nullptr);
  for (const vorq_string<char>* name : others) {
    void* result = &source;
    EXPECT_EQ(3, source.getInterface(*name, &result)) << name->data();
    EXPECT_EQ(nullptr, result);
  }
  for (const char* text : texts) {
    void* result = &source;
    EXPECT_EQ(3, source.getInterface(vorq_string<char>(text), &result));
    EXPECT_EQ(nullptr, result);
  }
}

TEST(MKVSourceShell, InterfaceNamesHoldTheEngineTexts) {
  EXPECT_STREQ("com.vorq.streamengine.interface.media", kMediaInterfaceName.data());
  EXPECT_STREQ("com.vorq.playback.interface.BasicPlayback", kBasicPlaybackInterfaceName.data());
  EXPECT_STREQ("com.vorq.streamengine.component.output.multiple",
               kMultipleOutputComponentName.data());
  EXPECT_STREQ("com.vorq.streamengine.interface.fileInspector",
               kFileInspectorInterfaceName.data());
}

TEST(MKVSourceShell, PublishesTheMatroskaMimeType) {
  MKVSource source(nullptr);
  const auto& types = source.supportedMimeTypes();
  ASSERT_EQ(1u, types.size());
  EXPECT_EQ("video/x-matroska", std::string(reinterpret_cast<const char*>(
                                    types.begin()->first.data())));
  EXPECT_EQ(1u, types.begin()->second);
}

TEST(MKVSourceShell, InitStoresTheControlAndUID) {
  MKVSource source(nullptr);
  source.init(nullptr, 77);
  EXPECT_EQ(77u, source.containerUID());
  EXPECT_EQ(nullptr, source.metadataDocument());
}

// A reader that tells when it is deleted.
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

TEST(MKVSourceShell, TheSecondConstructorOwnsItsReader) {
  int deletions = 0;
  {
    MKVSource source(nullptr, new TracedReader(&deletions));
    EXPECT_EQ(0, deletions);
  }
  EXPECT_EQ(1, deletions);
}

// Destruction runs close() on a reader that never opened, and that is fine;
// so is an explicit close before it.
TEST(MKVSourceShell, DestroysAnObjectThatWasNeverOpened) {
  int deletions = 0;
  auto* reader = new TracedReader(&deletions);
  auto* source = new MKVSource(nullptr, reader);
  EXPECT_EQ(0, source->close());
  EXPECT_EQ(1, reader->closes);
  Plugin* plugin = source;
  EXPECT_EQ(1, plugin->holdCount());
  EXPECT_EQ(2, plugin->retain());
  EXPECT_EQ(1, plugin->release());
  EXPECT_EQ(0, plugin->release());
  EXPECT_EQ(1, deletions);
}

}  // namespace
}  // namespace KVL
