#include <libxml/tree.h>
#include <unistd.h>

#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

std::string CaptureOpen(KVL::MKVSource& source, const KVL::MediaSource& media, int* result) {
  testing::internal::CaptureStdout();
  *result = source.open(media);
  return testing::internal::GetCapturedStdout();
}

class LifecycleTest : public SourceTest {};

TEST_F(LifecycleTest, OpenWithoutProbeHasNoTitleButAsksForLanguages) {
  media = SourceOf(FileUri(WriteTemp(VideoAndAudioFile())));
  EXPECT_EQ(0, source->open(*media));
  EXPECT_EQ(0u, source->getTitles().count());
  EXPECT_EQ((std::vector<std::string>{"getDefaultAudioLanguage", "getDefaultSubtitleLanguage"}),
            control.calls);
}

TEST_F(LifecycleTest, UrisThatAreNotFilesFailSilently) {
  for (const char* uri : {"http://example.invalid/a.mkv", "/tmp/bare.mkv", ""}) {
    int result = 0;
    EXPECT_EQ("", CaptureOpen(*source, *SourceOf(uri), &result));
    EXPECT_EQ(-1, result);
    EXPECT_EQ(uri, Text(source->getFilename()));
  }
  EXPECT_EQ(-1, source->open(static_cast<void*>(nullptr)));
}

// Without the control object from init() nothing can be published.
TEST_F(LifecycleTest, OpenBeforeInitIsRefused) {
  KVL::MKVSource fresh(&context);
  const std::string path = WriteTemp(VideoAndAudioFile());
  media = SourceOf(FileUri(path));
  void* saved = nullptr;
  ASSERT_TRUE(fresh.canPlay(*media, nullptr, &saved, nullptr));
  EXPECT_EQ(-1, fresh.open(saved));
  EXPECT_EQ(-1, fresh.open(*media));
  EXPECT_EQ(0u, fresh.getTitles().count());
  fresh.playFirstTitle();
  EXPECT_EQ(0u, fresh.getCurrentChapter());
}

TEST_F(LifecycleTest, OpenPublishesTitleChaptersAndAnEmptyDocument) {
  ASSERT_TRUE(Open(WriteTemp(VideoAndAudioFile()), false));
  EXPECT_EQ(1u, source->getTitles().count());
  EXPECT_EQ(10u, source->getChapters(0).count());
  xmlDoc* document = source->metadataDocument();
  ASSERT_NE(nullptr, document);
  xmlNode* root = xmlDocGetRootElement(document);
  ASSERT_NE(nullptr, root);
  EXPECT_STREQ("file_info", reinterpret_cast<const char*>(root->name));
  EXPECT_EQ(nullptr, root->children);
  EXPECT_EQ(0, source->close());
  EXPECT_EQ(nullptr, source->metadataDocument());
  EXPECT_EQ(0u, source->getTitles().count());
  EXPECT_EQ(0u, source->getChapters(0).count());
  EXPECT_EQ(0, source->close());
}

TEST_F(LifecycleTest, SecondOpenFailsAndKeepsTheFirstTitle) {
  ASSERT_TRUE(Open(WriteTemp(VideoAndAudioFile()), false));
  const unsigned long long title = source->getTitles().head()->value;
  const std::string uri = FileUri(WriteTemp(VideoAndAudioFile()));
  int result = 0;
  EXPECT_EQ("open failed on '" + uri + "' with -1\n", CaptureOpen(*source, *SourceOf(uri), &result));
  EXPECT_EQ(-1, result);
  EXPECT_EQ(title, source->getTitles().head()->value);
}

TEST_F(LifecycleTest, OpenAfterCloseMakesNewUids) {
  ASSERT_TRUE(Open(WriteTemp(VideoAndAudioFile()), false));
  const unsigned long long first = source->getTitles().head()->value;
  source->close();
  EXPECT_TRUE(source->isClosing());
  ASSERT_EQ(0, source->open(*media));
  EXPECT_LT(first, source->getTitles().head()->value);
  EXPECT_EQ(10u, source->getChapters(0).count());
}

TEST_F(LifecycleTest, AFileGoneBeforeOpenFails) {
  const std::string path = WriteTemp(VideoAndAudioFile());
  ASSERT_TRUE(Probe(path));
  ASSERT_EQ(0, unlink(path.c_str()));
  testing::internal::CaptureStdout();
  EXPECT_EQ(-1, source->open(session));
  session = nullptr;
  EXPECT_EQ("open failed on '" + FileUri(path) + "' with -1\n",
            testing::internal::GetCapturedStdout());
}

TEST_F(LifecycleTest, ClosingASavedSessionKeepsTheSourceUsable) {
  source->closeSavedSession(nullptr);
  ASSERT_TRUE(Probe(WriteTemp(VideoAndAudioFile())));
  source->closeSavedSession(session);
  session = nullptr;
  EXPECT_EQ(0, source->open(*media));
  EXPECT_EQ(1u, source->getTitles().count());
}

TEST_F(LifecycleTest, AVerifierIsAnnounced) {
  media = SourceOf(FileUri(WriteTemp(VideoAndAudioFile())));
  media->readInterfaces().verifier() = reinterpret_cast<KVL::VerifierInterface*>(&control);
  int result = -1;
  EXPECT_EQ("VerifierInterface is enabled. Search for Gold File\n",
            CaptureOpen(*source, *media, &result));
  EXPECT_EQ(0, result);
}

TEST_F(LifecycleTest, FilenameIsTheUriOfTheLastOpen) {
  EXPECT_EQ(0u, source->getFilename().length());
  ASSERT_TRUE(Open(WriteTemp(VideoAndAudioFile()), false));
  EXPECT_EQ(Text(media->getUri()), Text(source->getFilename()));
}

TEST_F(LifecycleTest, AuxiliaryTitlesCountReferences) {
  KVL::MKVSource::TitleInternal* record = source->loadAuxillaryTitle(3);
  EXPECT_EQ(2u, record->references);
  EXPECT_EQ(record, source->loadAuxillaryTitle(3));
  EXPECT_EQ(3u, record->references);
  source->unloadAuxillaryTitle(9);
  source->unloadAuxillaryTitle(3);
  EXPECT_EQ(2u, record->references);
  EXPECT_EQ(-1, record->titleIndex);
  EXPECT_TRUE(source->unloadInternal());
}

}  // namespace
}  // namespace mkvtest
