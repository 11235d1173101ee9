#include <fstream>
#include <iterator>

#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using KVL::FormatDescriptor;

std::string FileWithVideo(std::optional<std::string> codecId) {
  return WriteAv({Cluster{0, {Block{1, 0, true, {Payload(8)}}}}},
                 {VideoTrack(1, std::move(codecId)), AudioTrack(2)});
}

class ProbeTest : public SourceTest {};

TEST_F(ProbeTest, HttpIsPlayableWithoutLookingAtIt) {
  void* untouched = &refused;
  media = SourceOf("http://example.invalid/a.mkv");
  EXPECT_TRUE(source->canPlay(*media, nullptr, &untouched, &refused));
  EXPECT_EQ(&refused, untouched);
  EXPECT_TRUE(context.askedFormats().empty());
  // A parse that fails leaves the reader holding its file: no second probe.
  EXPECT_FALSE(Probe(WriteTemp(Bytes(64, 0x42))));
  EXPECT_FALSE(Probe(MediaPath("h264_aac")));
}

// URIs that name no file, files that aren't whole Matroska (the committed
// file cut in its EBML header, its Tracks and its second cluster's size), and a
// file without video: false, no session, and the engine is never asked.
TEST_F(ProbeTest, WhatIsNotAPlayableFileIsRefused) {
  std::ifstream in(MediaPath("h264_aac"), std::ios::binary);
  const Bytes whole{std::istreambuf_iterator<char>(in), {}};
  std::vector<std::string> uris = {"", "https://x/a.mkv", "ftp://x/a.mkv", "HTTP://x/a.mkv",
                                   MediaPath("h264_aac"), "file:///nonexistent/a.mkv",
                                   FileUri(MediaPath("aac_only"))};
  for (const Bytes& bytes : {Bytes{}, Bytes(100, 0xAB), Bytes(whole.begin(), whole.begin() + 30),
                             Bytes(whole.begin(), whole.begin() + 360),
                             Bytes(whole.begin(), whole.begin() + 6866)}) {
    uris.push_back(FileUri(WriteTemp(bytes)));
  }
  for (const std::string& uri : uris) {
    KVL::MKVSource fresh(&context);
    media = SourceOf(uri);
    EXPECT_FALSE(fresh.canPlay(*media, nullptr, &session, &refused)) << uri;
    EXPECT_EQ(nullptr, session);
  }
  EXPECT_TRUE(context.askedFormats().empty());
}

// Only the first video track's format is asked about; without a context
// every codec passes.
TEST_F(ProbeTest, AsksTheEngineAboutTheFirstVideoFormat) {
  const struct {
    std::optional<std::string> codecId;
    const char* asked;
  } cases[] = {{"V_MPEG4/ISO/AVC", ""},      {"V_MPEGH/ISO/HEVC", "H265"},
               {"V_MPEG4/ISO/HEVC", "H265"}, {"V_MPEG4/ISO/avc", ""}, {std::nullopt, ""}};
  for (const auto& c : cases) {
    KVL::PluginContext engine;
    KVL::MKVSource fresh(&engine);
    media = SourceOf(FileUri(FileWithVideo(c.codecId)));
    OutputOf(2, [&] { EXPECT_TRUE(fresh.canPlay(*media, nullptr, nullptr, nullptr)); });
    EXPECT_EQ(std::vector<std::string>{c.asked}, engine.askedFormats());
  }
  KVL::MKVSource without(nullptr);
  media = SourceOf(FileUri(FileWithVideo("V_VP9")));
  OutputOf(2, [&] { EXPECT_TRUE(without.canPlay(*media, nullptr, nullptr, nullptr)); });
  context.refuseVideoFormat("H265");
  EXPECT_TRUE(Probe(WriteMkv(MkvFile{{VideoTrack(), VideoTrack(2, "V_MPEGH/ISO/HEVC")}, {}})));
  EXPECT_NE(nullptr, session);
}

// A refusal appends one descriptor and closes the file, so the object can
// open it; without a list or a session pointer the verdict stands.
TEST_F(ProbeTest, ARefusedFormatIsDescribedAndClosesTheFile) {
  for (const char* format : {"H265", ""}) {
    KVL::PluginContext engine;
    engine.refuseVideoFormat(format);
    KVL::MKVSource fresh(&engine);
    fresh.init(&control, 1);
    std::vector<FormatDescriptor> descriptors;
    media = SourceOf(FileUri(MediaPath(*format ? "hevc_mp3" : "h264_aac")));
    EXPECT_FALSE(fresh.canPlay(*media, nullptr, &session, &descriptors));
    ASSERT_EQ(1u, descriptors.size());
    EXPECT_STREQ(format, descriptors[0].code);
    EXPECT_EQ(20u, descriptors[0].reason);
    EXPECT_EQ(1u, descriptors[0].mediaType);
    EXPECT_FALSE(fresh.canPlay(*media, nullptr, nullptr, nullptr));
    OutputOf(1, [&] { EXPECT_EQ(0, fresh.open(*media)); });
  }
}

TEST_F(ProbeTest, APositiveVerdictSavesTheSourceForOpen) {
  ASSERT_TRUE(Probe(MediaPath("h264_aac")));
  ASSERT_NE(nullptr, session);
  EXPECT_EQ(media.get(), static_cast<KVL::SavedSession*>(session)->source);
  EXPECT_EQ(0, OutputOf(1, [&] { EXPECT_EQ(0, source->open(session)); }).find("AutoChapter"));
  session = nullptr;
  EXPECT_EQ(1u, source->getTitles().count());
}

}  // namespace
}  // namespace mkvtest
