#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "plugin/kvl/media_buffer.h"
#include "plugin/kvl/properties.h"
#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using KVL::ImageProperties;

std::string FileWith(std::vector<Track> tracks) {
  return WriteAv({Cluster{0, {Block{1, 0, true, {Payload(8)}}}}}, std::move(tracks));
}
ImageProperties* Image(KVL::StreamInterface* s) {
  return static_cast<ImageProperties*>(s->properties());
}

// Codec private data goes out once, whole, tagged by kind; none or an empty one
// gives nothing. What nobody took goes with a second open or the stream.
TEST(StreamCoreTest, CodecDataIsHandedOverOnce) {
  const struct {
    std::optional<Bytes> codecPrivate;
    size_t stream;
    const char* tag;
  } cases[] = {{std::nullopt, 0, nullptr}, {Bytes{}, 1, nullptr}, {Bytes{1, 2, 3}, 0, "VID "},
               {Bytes{9}, 1, "AUD "}};
  for (const auto& c : cases) {
    std::vector<Track> tracks = {VideoTrack(), AudioTrack()};
    tracks[c.stream].codec_private = c.codecPrivate;
    OpenedTitle t(FileWith(tracks));
    t.opened(c.stream);  // a second open lets the first one's buffer go
    KVL::StreamInterface* stream = t.opened(c.stream);
    KVL::List<KVL::TypedMediaBuffer*> list;
    ASSERT_EQ(stream->getCodecData(&list), c.tag != nullptr);
    EXPECT_FALSE(stream->getCodecData(&list));
    EXPECT_EQ(stream->closeStream() + stream->closeStream(), 0);
    ASSERT_EQ(list.count(), c.tag ? 1u : 0u);
    if (!c.tag) continue;
    KVL::TypedMediaBuffer* buffer = list.head()->value;
    EXPECT_STREQ(buffer->tag, c.tag);
    EXPECT_EQ(buffer->mediaType, c.stream + 1);
    auto* payload = static_cast<uint8_t*>(buffer->lock());
    EXPECT_EQ(Bytes(payload, payload + buffer->chunkSize()), *c.codecPrivate);
    std::free(payload);
    buffer->unlock();
    delete buffer;
  }
}

// The segment's duration in ticks; without Duration, 0.
TEST(StreamCoreTest, InfoAndDuration) {
  MkvFile file{{VideoTrack(), AudioTrack()}, {}, 100000, 123456};  // ticks of 100 us
  file.tracks[1].name = "Commentary";
  OpenedTitle t(WriteMkv(file));
  EXPECT_EQ(t.control.stream(0)->info(nullptr, nullptr, nullptr, nullptr), 1);
  for (unsigned i = 0; i < 2; ++i) {
    KVL::vorq_string<unsigned char> name;
    KVL::vorq_string<char> language, country;
    unsigned int type = 99;
    EXPECT_EQ(t.control.stream(i)->info(&name, &language, &country, &type), 1);
    EXPECT_EQ(Text(name), i == 0 ? "" : "Commentary");
    EXPECT_EQ(language.toStlString() + country.toStlString(), "enus");
    EXPECT_EQ(type, i * 2);
    EXPECT_EQ(t.control.stream(i)->duration(), 123456u);
  }
  EXPECT_EQ(OpenedTitle(FileWith(file.tracks)).control.stream(0)->duration(), 0u);
}

// Audio rates are cut to whole numbers; an unknown video codec is logged twice.
TEST(StreamCoreTest, FormatsFollowTheCodecId) {
  const struct {
    std::optional<std::string> codec;
    const char* code;
  } videos[] = {{"V_MPEG4/ISO/AVC", "H264"}, {"V_MPEGH/ISO/HEVC", "H265"},
                {"V_MPEG4/ISO/AVCX", ""}, {std::nullopt, ""}};
  for (const auto& c : videos) {
    const std::string path = FileWith({VideoTrack(1, c.codec), AudioTrack()});
    std::unique_ptr<OpenedTitle> t;
    const std::string log = OutputOf(2, [&] { t = std::make_unique<OpenedTitle>(path); });
    KVL::StreamInterface* stream = t->control.stream(0);
    EXPECT_STREQ(stream->format()->code, c.code);
    EXPECT_EQ(stream->format()->mediaType, 1u);
    const std::string line = "Unknown CodecID:" + c.codec.value_or("") + "\n";
    const bool unknown = *c.code == 0 && c.codec;
    EXPECT_EQ(log, unknown ? "[MKVSource] canPlay:356: " + line +
                                 "[MKVSource] VideoStream:1726: " + line : "");
    EXPECT_EQ(Image(stream)->width * 1000 + Image(stream)->height, 64048u);
  }
  const struct {
    std::optional<std::string> codec;
    double rate;
    uint64_t channels;
    uint32_t tag, sampleRate;
  } audios[] = {{"A_MPEG/L3", 44100, 2, 0x55, 44100},
                {"A_AAC", 22050.7, 6, 0xFF, 22050},
                {"A_AAC/MPEG4/LC", 48000, 1, 0xFFFFFFFF, 48000},
                {std::nullopt, 8000, 2, 0xFFFFFFFF, 8000}};
  for (const auto& c : audios) {
    Track audio = AudioTrack(2, c.codec);
    audio.rate = c.rate;
    audio.channels = c.channels;
    OpenedTitle t(FileWith({VideoTrack(), audio}));
    KVL::StreamInterface* stream = t.control.stream(1);
    uint32_t tag;
    std::memcpy(&tag, stream->format()->code, sizeof(tag));
    EXPECT_EQ(tag, c.tag);
    EXPECT_EQ(stream->format()->mediaType, 2u);
    const auto* sound = static_cast<KVL::AudioProperties*>(stream->properties());
    EXPECT_EQ(sound->sampleRate, c.sampleRate);
    EXPECT_EQ(sound->channels, c.channels);
  }
}

// From a display size that differs from the pixel size; with both equal or absent,
// from an MPEG-4 part 2 track's header (aspect_ratio_info 3: 10:11); else unknown.
TEST(StreamCoreTest, PixelAspectRatio) {
  Track asp = VideoTrack(1, "V_MPEG4/ISO/ASP");
  asp.width = asp.height = 0;
  asp.codec_private = Bytes{0, 0, 1, 0, 0, 0, 1, 0x20, 0x00, 0x8C, 0, 0};
  Track squareAsp = asp;
  squareAsp.width = 176;
  squareAsp.height = 144;
  // The widest ratio that 32 bits hold, and one that they don't.
  Track widest = VideoTrack(), overflowing = VideoTrack();
  widest.width = overflowing.height = overflowing.display_width = UINT32_MAX;
  widest.height = widest.display_width = widest.display_height = overflowing.width = 1;
  overflowing.display_height = 2;
  const struct {
    std::string path;
    uint32_t x, y;
  } cases[] = {{MediaPath("mpeg4_aac"), 12, 11},
               {FileWith({asp, AudioTrack()}), 10, 11},
               {FileWith({squareAsp, AudioTrack()}), 10, 11},
               {FileWith({widest, AudioTrack()}), 1, UINT32_MAX},
               {FileWith({overflowing, AudioTrack()}), 0, 0}, {MediaPath("h264_aac"), 0, 0}};
  for (const auto& c : cases) {
    OpenedTitle t(c.path);
    const ImageProperties* image = Image(t.control.stream(0));
    EXPECT_EQ(std::make_pair(image->aspectX, image->aspectY), std::make_pair(c.x, c.y)) << c.path;
  }
}

}  // namespace
}  // namespace mkvtest
