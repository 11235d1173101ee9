#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "plugin/kvl/media_buffer.h"
#include "plugin/kvl/properties.h"
#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using KVL::AudioProperties;
using KVL::ImageProperties;

Track V(std::optional<std::string> codec = "V_MPEG4/ISO/AVC") {
  Track track = VideoTrack(1, std::move(codec));
  track.width = 640;
  track.height = 360;
  return track;
}
Track A(std::optional<std::string> codec = "A_AAC", double rate = 48000, uint64_t channels = 2) {
  return AudioTrack(2, std::move(codec), rate, channels);
}
const Cluster kOneFrame{0, {Block{1, 0, true, {Payload(8)}}}};
std::string FileWith(std::vector<Track> tracks) { return WriteAv({kOneFrame}, std::move(tracks)); }
uint32_t AudioTag(KVL::StreamInterface* stream) {
  uint32_t tag;
  std::memcpy(&tag, stream->format()->code, sizeof(tag));
  return tag;
}

TEST(StreamCoreTest, CodecDataIsHandedOverOnce) {
  struct Case {
    std::optional<Bytes> codecPrivate;
    size_t stream;
    const char* tag;
    uint32_t mediaType;
  } cases[] = {{std::nullopt, 0, nullptr, 0}, {Bytes{}, 1, nullptr, 0},
               {Bytes{1, 2, 3}, 0, "VID ", 1}, {Bytes{9}, 1, "AUD ", 2},
               {Bytes(1 << 22, 7), 0, "VID ", 1}};
  for (const Case& c : cases) {
    std::vector<Track> tracks = {V(), A()};
    tracks[c.stream].codec_private = c.codecPrivate;
    OpenedTitle t(FileWith(tracks));
    KVL::StreamInterface* stream = t.opened(c.stream);
    KVL::List<KVL::TypedMediaBuffer*> list;
    ASSERT_EQ(stream->getCodecData(&list), c.tag != nullptr);
    EXPECT_FALSE(stream->getCodecData(&list));
    EXPECT_EQ(stream->closeStream(), 0);
    EXPECT_EQ(stream->closeStream(), 0);
    ASSERT_EQ(list.count(), c.tag ? 1u : 0u);
    if (!c.tag) continue;
    KVL::TypedMediaBuffer* buffer = list.head()->value;
    EXPECT_STREQ(buffer->tag, c.tag);
    EXPECT_EQ(buffer->mediaType, c.mediaType);
    auto* payload = static_cast<uint8_t*>(buffer->lock());
    EXPECT_EQ(Bytes(payload, payload + buffer->chunkSize()), *c.codecPrivate);
    std::free(payload);
    buffer->unlock();
    delete buffer;
  }
  // Codec data nobody took goes with a second open and with the stream.
  std::vector<Track> tracks = {V(), A()};
  tracks[0].codec_private = Bytes{1, 2};
  OpenedTitle t(FileWith(tracks));
  t.opened(0);
  t.opened(0);
}

TEST(StreamCoreTest, InfoAndDuration) {
  MkvFile file{{V(), A()}, {kOneFrame}, 1000000, 5000};
  file.tracks[1].name = "Commentary";
  OpenedTitle t(WriteMkv(file));
  EXPECT_EQ(t.control.stream(0)->info(nullptr, nullptr, nullptr, nullptr), 1);
  for (unsigned i = 0; i < 2; ++i) {
    KVL::vorq_string<unsigned char> name;
    KVL::vorq_string<char> language, country;
    unsigned int type = 99;
    EXPECT_EQ(t.control.stream(i)->info(&name, &language, &country, &type), 1);
    EXPECT_EQ(Text(name), i == 0 ? "" : "Commentary");
    EXPECT_EQ(language.toStlString(), "en");
    EXPECT_EQ(country.toStlString(), "us");
    EXPECT_EQ(type, i == 0 ? 0u : 2u);
    EXPECT_EQ(t.control.stream(i)->duration(), 5000u);
  }
  file.scale = 100000;  // ticks of 100 us
  file.duration = 123456;
  EXPECT_EQ(OpenedTitle(WriteMkv(file)).control.stream(1)->duration(), 123456u);
  EXPECT_EQ(OpenedTitle(FileWith(file.tracks)).control.stream(0)->duration(), 0u);  // no Duration
}

TEST(StreamCoreTest, VideoFormats) {
  struct Case {
    std::optional<std::string> codec;
    const char* code;
    bool logged;
  } cases[] = {{"V_MPEG4/ISO/AVC", "H264", false}, {"V_MPEGH/ISO/HEVC", "H265", false},
               {"V_MPEG4/ISO/HEVC", "H265", false}, {"V_MPEG4/ISO/AVCX", "", true},
               {"v_mpeg4/iso/avc", "", true},       {"V_MS/VFW/FOURCC", "", true},
               {std::nullopt, "", false}};
  for (const Case& c : cases) {
    const std::string path = FileWith({V(c.codec), A()});
    std::unique_ptr<OpenedTitle> t;
    const std::string log = OutputOf(2, [&] { t = std::make_unique<OpenedTitle>(path); });
    ASSERT_TRUE(t->ok);
    KVL::StreamInterface* stream = t->control.stream(0);
    EXPECT_STREQ(stream->format()->code, c.code);
    EXPECT_EQ(stream->format()->mediaType, 1u);
    const std::string line = "VideoStream:1726: Unknown CodecID:" + c.codec.value_or("") + "\n";
    EXPECT_EQ(log.find(line) != std::string::npos, c.logged) << log;
    EXPECT_EQ(log.find("VideoStream") != std::string::npos, c.logged) << log;
    auto* image = static_cast<ImageProperties*>(stream->properties());
    EXPECT_EQ(image->width * 1000 + image->height, 640360u);
  }
}

TEST(StreamCoreTest, AudioFormats) {
  struct Case {
    std::optional<std::string> codec;
    double rate;
    uint64_t channels;
    uint32_t tag, sampleRate;
  } cases[] = {{"A_MPEG/L3", 44100, 2, 0x55, 44100},
               {"A_AAC", 22050.7, 6, 0xFF, 22050},
               {"A_AAC/MPEG4/LC", 48000, 1, 0xFFFFFFFF, 48000},
               {"A_MPEG/L2", 32000, 2, 0xFFFFFFFF, 32000},
               {std::nullopt, 8000, 2, 0xFFFFFFFF, 8000}};
  for (const Case& c : cases) {
    OpenedTitle t(FileWith({V(), A(c.codec, c.rate, c.channels)}));
    KVL::StreamInterface* stream = t.control.stream(1);
    EXPECT_EQ(AudioTag(stream), c.tag);
    EXPECT_EQ(stream->format()->mediaType, 2u);
    auto* audio = static_cast<AudioProperties*>(stream->properties());
    EXPECT_EQ(audio->sampleRate, c.sampleRate);
    EXPECT_EQ(audio->channels, c.channels);
  }
}

// Audio first: the video reader at position 0 holds the audio track and the
// audio reader at position 1 the video track; neither takes the other kind.
TEST(StreamCoreTest, ReadersOnTracksOfTheOtherKindStayEmpty) {
  std::vector<Track> tracks = {A(), V(), A()};
  for (uint64_t i = 0; i < 3; ++i) tracks[i].number = i + 1;
  OpenedTitle t(FileWith(tracks));
  ASSERT_EQ(t.control.streamCount(), 2u);
  EXPECT_EQ(static_cast<ImageProperties*>(t.opened(0)->properties())->width, 0u);
  EXPECT_STREQ(t.control.stream(0)->format()->code, "");
  EXPECT_EQ(static_cast<AudioProperties*>(t.opened(1)->properties())->sampleRate, 0u);
  EXPECT_EQ(AudioTag(t.control.stream(1)), 0xFFFFFFFF);
}

// From the display size (4:3 over 176x144 in the committed file); without a
// picture size, from the Video Object Layer header of an MPEG-4 part 2
// track (aspect_ratio_info 3: 10:11); else square pixels.
TEST(StreamCoreTest, PixelAspectRatio) {
  Track asp = VideoTrack(1, "V_MPEG4/ISO/ASP");
  asp.width = asp.height = 0;
  asp.codec_private = Bytes{0, 0, 1, 0, 0, 0, 1, 0x20, 0x00, 0x8C, 0, 0};
  struct Case {
    std::string path;
    uint32_t x, y;
  } cases[] = {{MediaPath("mpeg4_aac"), 12, 11},
               {FileWith({asp, A()}), 10, 11},
               {MediaPath("h264_aac"), 1, 1}};
  for (const Case& c : cases) {
    OpenedTitle t(c.path);
    auto* image = static_cast<ImageProperties*>(t.control.stream(0)->properties());
    EXPECT_EQ(image->aspectX, c.x) << c.path;
    EXPECT_EQ(image->aspectY, c.y) << c.path;
  }
}

}  // namespace
}  // namespace mkvtest
