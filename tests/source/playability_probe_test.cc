#include <fstream>
#include <iterator>

#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using ProbeTest = SourceTest;

// http is played unseen. A failed parse leaves the reader holding its file.
TEST_F(ProbeTest, HttpIsPlayableWithoutLookingAtIt) {
  void* untouched = &refused;
  media = SourceOf("http://example.invalid/a.mkv");
  EXPECT_TRUE(source->canPlay(*media, nullptr, &untouched, &refused));
  EXPECT_EQ(&refused, untouched);
  EXPECT_TRUE(context.askedFormats().empty());
  EXPECT_FALSE(Probe(WriteTemp(Bytes(64, 0x42))));
  EXPECT_FALSE(Probe(MediaPath("h264_aac")));
}

// URIs that name no file, the committed file cut in or right behind its EBML header, in its
// Tracks and its second cluster's size, and a file without video: false, no session.
TEST_F(ProbeTest, WhatIsNotAPlayableFileIsRefused) {
  std::ifstream in(MediaPath("h264_aac"), std::ios::binary);
  const Bytes whole{std::istreambuf_iterator<char>(in), {}};
  std::vector<std::string> uris = {"", "ftp://x/a.mkv", "HTTP://x/a.mkv",
                                   MediaPath("h264_aac"), FileUri(MediaPath("aac_only"))};
  for (size_t size : {0, 30, 360, 6866, 40})
    uris.push_back(FileUri(WriteTemp(Bytes(whole.begin(), whole.begin() + size))));
  for (const std::string& uri : uris) {
    KVL::MKVSource fresh(&context);
    media = SourceOf(uri);
    EXPECT_FALSE(fresh.canPlay(*media, nullptr, &session, &refused)) << uri;
    EXPECT_EQ(nullptr, session);
  }
  EXPECT_TRUE(context.askedFormats().empty());
  for (const std::string& cut : {uris[uris.size() - 2], uris.back()}) {
    KVL::MKVSource reused(&context);  // a good file's tracks don't make a cut one playable
    media = SourceOf(FileUri(MediaPath("h264_aac")));
    EXPECT_TRUE(reused.canPlay(*media, nullptr, nullptr, nullptr));
    media = SourceOf(cut);
    EXPECT_FALSE(reused.canPlay(*media, nullptr, nullptr, nullptr)) << cut;
  }
}

// Only the first video track's format is asked about; without a context every
// codec passes, and without init() opening fails. A refusal appends one descriptor
// and closes the file for open.
TEST_F(ProbeTest, AsksTheEngineAboutTheFirstVideoFormat) {
  const struct {
    std::optional<std::string> codecId;
    const char* asked;
  } cases[] = {{"V_MPEG4/ISO/AVC", ""}, {"V_MPEGH/ISO/HEVC", "H265"}, {"V_MPEG4/ISO/avc", ""}};
  for (const auto& c : cases) {
    KVL::PluginContext engine;
    KVL::MKVSource fresh(&engine);
    media = SourceOf(FileUri(WriteAv({}, {VideoTrack(1, c.codecId), AudioTrack()})));
    OutputOf(2, [&] { EXPECT_TRUE(fresh.canPlay(*media, nullptr, nullptr, nullptr)); });
    EXPECT_EQ(std::vector<std::string>{c.asked}, engine.askedFormats());
  }
  KVL::MKVSource without(nullptr);  // nor init(): nothing can be published
  media = SourceOf(FileUri(WriteAv({}, {VideoTrack(1, "V_VP9"), AudioTrack()})));
  void* saved = nullptr;
  OutputOf(2, [&] { EXPECT_TRUE(without.canPlay(*media, nullptr, &saved, nullptr)); });
  EXPECT_EQ(-1, without.open(saved));
  EXPECT_EQ(-1, without.open(*media));
  without.playFirstTitle();
  EXPECT_EQ(0u, without.getCurrentChapter());
  context.refuseVideoFormat("H265");
  EXPECT_TRUE(Probe(WriteMkv(MkvFile{{VideoTrack(), VideoTrack(2, "V_MPEGH/ISO/HEVC")}, {}})));
  EXPECT_NE(nullptr, session);
  KVL::MKVSource refusing(&context);  // tracks add up over probes: one object each
  refusing.init(&control, 1);
  media = SourceOf(FileUri(MediaPath("hevc_mp3")));
  EXPECT_FALSE(refusing.canPlay(*media, nullptr, nullptr, &refused));
  ASSERT_EQ(1u, refused.size());
  EXPECT_EQ(1u, refused[0].mediaType);
  OutputOf(1, [&] { EXPECT_EQ(0, refusing.open(*media)); });
}

}  // namespace
}  // namespace mkvtest
