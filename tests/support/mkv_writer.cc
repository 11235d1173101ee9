#include "tests/support/mkv_writer.h"

#include <algorithm>
#include <utility>

namespace mkvtest {
namespace {

enum ElementId : uint32_t {
  kEbml = 0x1A45DFA3,
  kEbmlVersion = 0x4286,
  kEbmlReadVersion = 0x42F7,
  kEbmlMaxIdLength = 0x42F2,
  kEbmlMaxSizeLength = 0x42F3,
  kDocType = 0x4282,
  kDocTypeVersion = 0x4287,
  kDocTypeReadVersion = 0x4285,
  kSegment = 0x18538067,
  kInfo = 0x1549A966,
  kTimecodeScale = 0x2AD7B1,
  kDuration = 0x4489,
  kTracks = 0x1654AE6B,
  kTrackEntry = 0xAE,
  kTrackNumber = 0xD7,
  kTrackUid = 0x73C5,
  kTrackType = 0x83,
  kCodecId = 0x86,
  kCodecPrivate = 0x63A2,
  kDefaultDuration = 0x23E383,
  kName = 0x536E,
  kVideo = 0xE0,
  kPixelWidth = 0xB0,
  kPixelHeight = 0xBA,
  kAudio = 0xE1,
  kSamplingFrequency = 0xB5,
  kChannels = 0x9F,
  kCluster = 0x1F43B675,
  kTimecode = 0xE7,
  kSimpleBlock = 0xA3,
  kBlockGroup = 0xA0,
  kBlock = 0xA1,
  kBlockDuration = 0x9B,
  kReferenceBlock = 0xFB,
};

constexpr uint8_t kKeyFlag = 0x80;

// The lace header that goes between the flags and the frames.
Bytes LaceHeader(const Block& block) {
  Bytes header;
  if (block.lacing == Lacing::kNone || block.frames.empty()) return header;
  header.push_back(static_cast<uint8_t>(block.frames.size() - 1));
  const size_t sized = block.frames.size() - 1;  // the last size is implied
  if (block.lacing == Lacing::kXiph) {
    for (size_t i = 0; i < sized; ++i) {
      size_t size = block.frames[i].size();
      for (; size >= 255; size -= 255) header.push_back(255);
      header.push_back(static_cast<uint8_t>(size));
    }
  } else if (block.lacing == Lacing::kEbml && sized > 0) {
    AppendVint(&header, block.frames[0].size());
    for (size_t i = 1; i < sized; ++i) {
      AppendSignedVint(&header, static_cast<int64_t>(block.frames[i].size()) -
                                    static_cast<int64_t>(block.frames[i - 1].size()));
    }
  }
  return header;
}

class SegmentWriter {
 public:
  SegmentWriter(const MkvFile& file, SerializedMkv* out)
      : file_(file), out_(out), ebml_(&out->bytes) {}

  void Write() {
    out_->ebml_header = WriteMaster(kEbml, [&] {
      ebml_.UInt(kEbmlVersion, 1);
      ebml_.UInt(kEbmlReadVersion, 1);
      ebml_.UInt(kEbmlMaxIdLength, 4);
      ebml_.UInt(kEbmlMaxSizeLength, 8);
      ebml_.String(kDocType, "matroska");
      ebml_.UInt(kDocTypeVersion, 4);
      ebml_.UInt(kDocTypeReadVersion, 2);
    });
    WriteMaster(kSegment, [&] {
      WriteMaster(kInfo, [&] {
        if (file_.info.timecode_scale) ebml_.UInt(kTimecodeScale, *file_.info.timecode_scale);
        if (file_.info.duration) ebml_.Float(kDuration, *file_.info.duration);
      });
      out_->tracks = WriteMaster(kTracks, [&] {
        for (const Track& track : file_.tracks) WriteTrack(track);
      });
      for (size_t i = 0; i < file_.clusters.size(); ++i) {
        out_->clusters.push_back(WriteMaster(kCluster, [&] {
          ebml_.UInt(kTimecode, file_.clusters[i].timecode);
          for (size_t b = 0; b < file_.clusters[i].blocks.size(); ++b) WriteBlock(i, b);
        }));
      }
    });
  }

 private:
  // Writes a master element around what `body` writes; returns its span.
  template <typename Body>
  Span WriteMaster(uint32_t id, Body body) {
    const size_t start = ebml_.StartMaster(id);
    body();
    ebml_.EndMaster(start);
    return {start, ebml_.offset() - start};
  }

  void WriteTrack(const Track& track) {
    WriteMaster(kTrackEntry, [&] {
      ebml_.UInt(kTrackNumber, track.number);
      ebml_.UInt(kTrackUid, track.uid != 0 ? track.uid : track.number);
      ebml_.UInt(kTrackType, track.type);
      if (track.codec_id) ebml_.String(kCodecId, *track.codec_id);
      if (track.codec_private) ebml_.Binary(kCodecPrivate, *track.codec_private);
      if (track.default_duration) ebml_.UInt(kDefaultDuration, *track.default_duration);
      if (track.name) ebml_.String(kName, *track.name);
      if (const auto& video = track.video) {
        WriteMaster(kVideo, [&] {
          if (video->pixel_width) ebml_.UInt(kPixelWidth, *video->pixel_width);
          if (video->pixel_height) ebml_.UInt(kPixelHeight, *video->pixel_height);
        });
      }
      if (const auto& audio = track.audio) {
        WriteMaster(kAudio, [&] {
          if (audio->sampling_frequency) ebml_.Float(kSamplingFrequency, *audio->sampling_frequency);
          if (audio->channels) ebml_.UInt(kChannels, *audio->channels);
        });
      }
    });
  }

  void WriteBlock(size_t cluster, size_t index) {
    const Block& block = file_.clusters[cluster].blocks[index];
    const size_t group = block.in_group ? ebml_.StartMaster(kBlockGroup) : 0;

    Bytes head;
    AppendVint(&head, block.track);
    head.push_back(static_cast<uint8_t>(static_cast<uint16_t>(block.timecode) >> 8));
    head.push_back(static_cast<uint8_t>(block.timecode));
    // A Block has no key flag: a BlockGroup without a ReferenceBlock is key.
    const bool key_flag = block.key && !block.in_group;
    head.push_back((key_flag ? kKeyFlag : 0) | static_cast<uint8_t>(block.lacing) << 1);
    const Bytes lace = LaceHeader(block);
    head.insert(head.end(), lace.begin(), lace.end());
    size_t payload = 0;
    for (const Bytes& frame : block.frames) payload += frame.size();

    ebml_.Header(block.in_group ? kBlock : kSimpleBlock, head.size() + payload);
    Bytes& bytes = out_->bytes;
    bytes.insert(bytes.end(), head.begin(), head.end());
    std::vector<FramePlace>& places = out_->frames;
    const size_t first = places.size();
    for (size_t i = 0; i < block.frames.size(); ++i) {
      places.push_back({cluster, index, i, block.track, static_cast<int64_t>(bytes.size()),
                        static_cast<int64_t>(block.frames[i].size())});
      bytes.insert(bytes.end(), block.frames[i].begin(), block.frames[i].end());
    }
    // Unlaced frames are one frame to a parser.
    if (block.lacing == Lacing::kNone && block.frames.size() > 1) {
      places.resize(first + 1);
      places[first].len = static_cast<int64_t>(payload);
    }
    if (block.in_group) {
      if (block.duration) ebml_.UInt(kBlockDuration, *block.duration);
      if (!block.key) ebml_.Binary(kReferenceBlock, {0xFF});  // -1
      ebml_.EndMaster(group);
    }
  }

  const MkvFile& file_;
  SerializedMkv* out_;
  EbmlWriter ebml_;
};

}  // namespace

Track Track::Video(uint64_t number, std::string codec_id, uint64_t width,
                   uint64_t height) {
  Track track;
  track.number = number;
  track.type = kVideoTrack;
  track.codec_id = std::move(codec_id);
  track.video = VideoSettings{width, height};
  return track;
}

Track Track::Audio(uint64_t number, std::string codec_id,
                   double sampling_frequency, uint64_t channels) {
  Track track;
  track.number = number;
  track.type = kAudioTrack;
  track.codec_id = std::move(codec_id);
  track.audio = AudioSettings{sampling_frequency, channels};
  return track;
}

Block SimpleBlock(uint64_t track, int16_t timecode, bool key,
                  std::vector<Bytes> frames, Lacing lacing) {
  Block block;
  block.track = track;
  block.timecode = timecode;
  block.key = key;
  block.lacing = lacing;
  block.frames = std::move(frames);
  return block;
}

Block GroupBlock(uint64_t track, int16_t timecode, bool key,
                 std::vector<Bytes> frames, std::optional<uint64_t> duration,
                 Lacing lacing) {
  Block block = SimpleBlock(track, timecode, key, std::move(frames), lacing);
  block.in_group = true;
  block.duration = duration;
  return block;
}

SerializedMkv Serialize(const MkvFile& file) {
  SerializedMkv out;
  SegmentWriter(file, &out).Write();
  return out;
}

Bytes Payload(size_t size, uint8_t first) {
  Bytes payload(size);
  for (size_t i = 0; i < size; ++i) payload[i] = static_cast<uint8_t>(first + i);
  return payload;
}

Bytes Truncated(const Bytes& bytes, size_t size) {
  return Bytes(bytes.begin(), bytes.begin() + std::min(size, bytes.size()));
}

}  // namespace mkvtest
