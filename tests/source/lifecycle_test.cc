#include <libxml/tree.h>

#include "streams/title_internal.h"
#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

const std::string kFile = MediaPath("h264_aac");

using LifecycleTest = SourceTest;

// Open without a probe parses nothing, but asks the languages and announces a
// verifier. URIs that are not files fail silently.
TEST_F(LifecycleTest, OpenWithoutProbe) {
  media = SourceOf(FileUri(kFile));
  media->readInterfaces().verifier() = reinterpret_cast<KVL::VerifierInterface*>(&control);
  EXPECT_EQ("VerifierInterface is enabled. Search for Gold File\n",
            OutputOf(1, [&] { EXPECT_EQ(0, source->open(*media)); }));
  EXPECT_EQ(0u, source->getTitles().count());
  EXPECT_EQ((std::vector<std::string>{"audioLanguage", "subtitleLanguage"}), control.calls);
  source->close();
  for (const char* uri : {"http://example.invalid/a.mkv", ""}) {
    media = SourceOf(uri);
    EXPECT_EQ("", OutputOf(1, [&] { EXPECT_EQ(-1, source->open(*media)); }));
    EXPECT_EQ(uri, Text(source->getFilename()));
  }
  EXPECT_EQ(-1, source->open(static_cast<void*>(nullptr)));
}

// A saved session closed unused leaves the source usable. The document is a bare
// root; close frees it with the title and chapters, twice without harm, and a new
// open makes new UIDs; a second open fails on the open reader and keeps the title.
TEST_F(LifecycleTest, OpenPublishesTitleChaptersAndAnEmptyDocument) {
  source->closeSavedSession(nullptr);
  ASSERT_TRUE(Probe(kFile));
  source->closeSavedSession(session);
  ASSERT_TRUE(Open(kFile, false));
  EXPECT_EQ(Text(media->getUri()), Text(source->getFilename()));
  EXPECT_EQ(1u, source->getTitles().count());
  xmlNode* root = xmlDocGetRootElement(source->metadataDocument());
  ASSERT_NE(nullptr, root);
  EXPECT_STREQ("file_info", reinterpret_cast<const char*>(root->name));
  EXPECT_EQ(nullptr, root->children);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(0, source->close());
    EXPECT_EQ(nullptr, source->metadataDocument());
    EXPECT_EQ(0u, source->getTitles().count() + source->getChapters(0).count());
  }
  EXPECT_EQ(-1, source->open(new KVL::SavedSession{nullptr}));  // no source: nothing published
  EXPECT_EQ(0, source->getBufferingProgress());
  EXPECT_TRUE(source->isClosing());
  ASSERT_EQ(0, source->open(*media));
  const unsigned long long reopened = source->getTitles().head()->value;
  EXPECT_LT(titleUID, reopened);
  EXPECT_EQ(10u, source->getChapters(0).count());
  EXPECT_EQ("open failed on '" + FileUri(kFile) + "' with -1\n",
            OutputOf(1, [&] { EXPECT_EQ(-1, source->open(*media)); }));
  EXPECT_EQ(reopened, source->getTitles().head()->value);
}

// A new record leaves with two references; an unload counts one down, of a known key only.
TEST_F(LifecycleTest, AuxiliaryTitlesCountTheirReferences) {
  KVL::MKVSource::TitleInternal* record = source->loadAuxillaryTitle(5);
  EXPECT_EQ(record, source->loadAuxillaryTitle(5));
  source->unloadAuxillaryTitle(5);
  source->unloadAuxillaryTitle(6);
  EXPECT_EQ(2u, record->references);
}

}  // namespace
}  // namespace mkvtest
