#include <cstring>

#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using KVL::FormatDescriptor;

MkvFile FileWithVideo(std::optional<std::string> codecId) {
  MkvFile file = VideoAndAudioFile();
  file.tracks[0].codec_id = codecId;
  return file;
}

class ProbeTest : public SourceTest {};

TEST_F(ProbeTest, HttpIsPlayableWithoutLookingAtIt) {
  void* untouched = &refused;
  media = SourceOf("http://example.invalid/a.mkv");
  EXPECT_TRUE(source->canPlay(*media, nullptr, &untouched, &refused));
  EXPECT_EQ(&refused, untouched);
  EXPECT_TRUE(context.askedFormats().empty());
}

// URIs that name no file, files that aren't whole Matroska, and a file
// without video: false, no session, and the engine is never asked.
TEST_F(ProbeTest, WhatIsNotAPlayableFileIsRefused) {
  const SerializedMkv mkv = Serialize(VideoAndAudioFile());
  MkvFile audioOnly;
  audioOnly.tracks.push_back(Track::Audio(1, "A_AAC", 48000, 2));
  audioOnly.clusters.push_back(Cluster{0, {SimpleBlock(1, 0, true, {Payload(10)})}});
  std::vector<std::string> uris = {"", "https://x/a.mkv", "ftp://x/a.mkv", "HTTP://x/a.mkv",
                                   WriteTemp(mkv.bytes), "file:///nonexistent/a.mkv",
                                   FileUri(WriteTemp(audioOnly))};
  for (const Bytes& bytes : {Bytes{}, Bytes(100, 0xAB),
                             Truncated(mkv.bytes, mkv.ebml_header.end() - 3),
                             Truncated(mkv.bytes, mkv.tracks.offset + mkv.tracks.size / 2),
                             Truncated(mkv.bytes, mkv.clusters[1].offset + 8)}) {
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

// A parse that fails leaves the reader holding its file, so the object
// can't probe again.
TEST_F(ProbeTest, AFailedParseLeavesTheReaderOpen) {
  EXPECT_FALSE(Probe(WriteTemp(Bytes(64, 0x42))));
  EXPECT_FALSE(Probe(WriteTemp(VideoAndAudioFile())));
}

struct FormatCase {
  std::optional<std::string> codecId;
  const char* asked;
  bool logged;
};

TEST_F(ProbeTest, AsksTheEngineAboutTheFirstVideoFormat) {
  const FormatCase cases[] = {
      {"V_MPEG4/ISO/AVC", "", false},       {"V_MPEGH/ISO/HEVC", "H265", false},
      {"V_MPEG4/ISO/HEVC", "H265", false},  {"V_MPEG4/ISO/ASP", "", true},
      {"V_MPEG4/ISO/avc", "", true},        {std::nullopt, "", false},
  };
  for (const FormatCase& c : cases) {
    KVL::PluginContext engine;
    KVL::MKVSource fresh(&engine);
    testing::internal::CaptureStderr();
    media = SourceOf(FileUri(WriteTemp(FileWithVideo(c.codecId))));
    EXPECT_TRUE(fresh.canPlay(*media, nullptr, nullptr, nullptr));
    const std::string log = testing::internal::GetCapturedStderr();
    ASSERT_EQ(1u, engine.askedFormats().size());
    EXPECT_EQ(c.asked, engine.askedFormats()[0]);
    EXPECT_EQ(c.logged, log.find("Unknown CodecID:" + c.codecId.value_or("")) != std::string::npos)
        << log;
  }
}

TEST_F(ProbeTest, OnlyTheFirstVideoTrackCounts) {
  MkvFile file = VideoAndAudioFile();
  file.tracks.push_back(Track::Video(3, "V_MPEGH/ISO/HEVC", 64, 64));
  context.refuseVideoFormat("H265");
  EXPECT_TRUE(Probe(WriteTemp(file)));
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
    media = SourceOf(FileUri(WriteTemp(FileWithVideo(*format ? "V_MPEGH/ISO/HEVC"
                                                              : "V_MPEG4/ISO/AVC"))));
    EXPECT_FALSE(fresh.canPlay(*media, nullptr, &session, &descriptors));
    ASSERT_EQ(1u, descriptors.size());
    const FormatDescriptor& d = descriptors[0];
    EXPECT_STREQ(format, d.code);
    EXPECT_EQ(20u, d.reason);
    EXPECT_EQ(1u, d.mediaType);
    EXPECT_EQ(0u, d.reserved);
    EXPECT_FALSE(fresh.canPlay(*media, nullptr, nullptr, nullptr));
    StdoutOf([&] { EXPECT_EQ(0, fresh.open(*media)); });
  }
}

TEST_F(ProbeTest, WithoutAContextEveryVideoCodecPasses) {
  KVL::MKVSource fresh(nullptr);
  testing::internal::CaptureStderr();
  media = SourceOf(FileUri(WriteTemp(FileWithVideo("V_VP9"))));
  EXPECT_TRUE(fresh.canPlay(*media, nullptr, nullptr, nullptr));
  testing::internal::GetCapturedStderr();
}

TEST_F(ProbeTest, APositiveVerdictSavesTheSourceForOpen) {
  ASSERT_TRUE(Probe(WriteTemp(VideoAndAudioFile())));
  ASSERT_NE(nullptr, session);
  EXPECT_EQ(media.get(), static_cast<KVL::SavedSession*>(session)->source);
  EXPECT_EQ(0, source->open(session));
  session = nullptr;
  EXPECT_EQ(1u, source->getTitles().count());
}

}  // namespace
}  // namespace mkvtest
