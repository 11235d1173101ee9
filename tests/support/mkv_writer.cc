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
  kSeekHead = 0x114D9B74,
  kSeek = 0x4DBB,
  kSeekId = 0x53AB,
  kSeekPosition = 0x53AC,
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

uint8_t LacingFlags(Lacing lacing) {
  switch (lacing) {
    case Lacing::kNone: return 0x00;
    case Lacing::kXiph: return 0x02;
    case Lacing::kFixed: return 0x04;
    case Lacing::kEbml: return 0x06;
  }
  return 0x00;
}

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
    WriteEbmlHeader();
    const size_t segment = file_.unknown_segment_size
                               ? ebml_.StartUnknownSizeMaster(kSegment)
                               : ebml_.StartMaster(kSegment);
    out_->segment_data = ebml_.offset();
    std::vector<size_t> seek_positions;
    if (file_.seek_head) seek_positions = WriteSeekHead();
    out_->info = WriteInfo();
    out_->tracks = WriteTracks();
    if (file_.seek_head) {
      ebml_.PatchUInt8(seek_positions[0], out_->info.offset - out_->segment_data);
      ebml_.PatchUInt8(seek_positions[1], out_->tracks.offset - out_->segment_data);
    }
    for (size_t i = 0; i < file_.clusters.size(); ++i) WriteCluster(i);
    if (!file_.unknown_segment_size) ebml_.EndMaster(segment);
    out_->segment = {segment, ebml_.offset() - segment};
  }

 private:
  void WriteEbmlHeader() {
    const size_t start = ebml_.StartMaster(kEbml);
    ebml_.UInt(kEbmlVersion, 1);
    ebml_.UInt(kEbmlReadVersion, 1);
    ebml_.UInt(kEbmlMaxIdLength, 4);
    ebml_.UInt(kEbmlMaxSizeLength, 8);
    ebml_.String(kDocType, file_.doc_type);
    ebml_.UInt(kDocTypeVersion, 4);
    ebml_.UInt(kDocTypeReadVersion, 2);
    ebml_.EndMaster(start);
    out_->ebml_header = {start, ebml_.offset() - start};
  }

  // Returns where the positions of Info and Tracks go once they are known.
  std::vector<size_t> WriteSeekHead() {
    const size_t start = ebml_.StartMaster(kSeekHead);
    std::vector<size_t> positions;
    for (uint32_t id : {kInfo, kTracks}) {
      const size_t seek = ebml_.StartMaster(kSeek);
      ebml_.Binary(kSeekId, {static_cast<uint8_t>(id >> 24), static_cast<uint8_t>(id >> 16),
                             static_cast<uint8_t>(id >> 8), static_cast<uint8_t>(id)});
      positions.push_back(ebml_.UInt8(kSeekPosition, 0));
      ebml_.EndMaster(seek);
    }
    ebml_.EndMaster(start);
    out_->seek_head = Span{start, ebml_.offset() - start};
    return positions;
  }

  Span WriteInfo() {
    const size_t start = ebml_.StartMaster(kInfo);
    const Info& info = file_.info;
    if (info.timecode_scale) ebml_.UInt(kTimecodeScale, *info.timecode_scale);
    if (info.duration) ebml_.Float(kDuration, *info.duration);
    ebml_.EndMaster(start);
    return {start, ebml_.offset() - start};
  }

  Span WriteTracks() {
    const size_t start = ebml_.StartMaster(kTracks);
    for (const Track& track : file_.tracks) WriteTrack(track);
    ebml_.EndMaster(start);
    return {start, ebml_.offset() - start};
  }

  void WriteTrack(const Track& track) {
    const size_t start = ebml_.StartMaster(kTrackEntry);
    ebml_.UInt(kTrackNumber, track.number);
    ebml_.UInt(kTrackUid, track.uid != 0 ? track.uid : track.number);
    ebml_.UInt(kTrackType, track.type);
    if (track.codec_id) ebml_.String(kCodecId, *track.codec_id);
    if (track.codec_private) ebml_.Binary(kCodecPrivate, *track.codec_private);
    if (track.default_duration) ebml_.UInt(kDefaultDuration, *track.default_duration);
    if (track.name) ebml_.String(kName, *track.name);
    if (track.video) {
      const size_t video = ebml_.StartMaster(kVideo);
      if (track.video->pixel_width) ebml_.UInt(kPixelWidth, *track.video->pixel_width);
      if (track.video->pixel_height) ebml_.UInt(kPixelHeight, *track.video->pixel_height);
      ebml_.EndMaster(video);
    }
    if (track.audio) {
      const size_t audio = ebml_.StartMaster(kAudio);
      if (track.audio->sampling_frequency) {
        ebml_.Float(kSamplingFrequency, *track.audio->sampling_frequency);
      }
      if (track.audio->channels) ebml_.UInt(kChannels, *track.audio->channels);
      ebml_.EndMaster(audio);
    }
    ebml_.EndMaster(start);
  }

  void WriteCluster(size_t index) {
    const Cluster& cluster = file_.clusters[index];
    const size_t start = cluster.unknown_size ? ebml_.StartUnknownSizeMaster(kCluster)
                                              : ebml_.StartMaster(kCluster);
    ebml_.UInt(kTimecode, cluster.timecode);
    for (size_t i = 0; i < cluster.blocks.size(); ++i) WriteBlock(index, i);
    if (!cluster.unknown_size) ebml_.EndMaster(start);
    out_->clusters.push_back({start, ebml_.offset() - start});
  }

  void WriteBlock(size_t cluster, size_t index) {
    const Block& block = file_.clusters[cluster].blocks[index];
    const size_t start = ebml_.offset();
    const size_t group = block.in_group ? ebml_.StartMaster(kBlockGroup) : 0;

    Bytes head;
    AppendVint(&head, block.track);
    head.push_back(static_cast<uint8_t>(static_cast<uint16_t>(block.timecode) >> 8));
    head.push_back(static_cast<uint8_t>(block.timecode));
    // A Block has no key flag: a BlockGroup without a ReferenceBlock is key.
    const bool key_flag = block.key && !block.in_group;
    head.push_back((key_flag ? kKeyFlag : 0) | LacingFlags(block.lacing));
    const Bytes lace = LaceHeader(block);
    head.insert(head.end(), lace.begin(), lace.end());
    size_t payload = 0;
    for (const Bytes& frame : block.frames) payload += frame.size();

    ebml_.Header(block.in_group ? kBlock : kSimpleBlock, head.size() + payload);
    Bytes& bytes = out_->bytes;
    bytes.insert(bytes.end(), head.begin(), head.end());
    std::vector<FramePlace> places;
    for (size_t i = 0; i < block.frames.size(); ++i) {
      places.push_back({cluster, index, i, block.track, {},
                        static_cast<int64_t>(bytes.size()),
                        static_cast<int64_t>(block.frames[i].size())});
      bytes.insert(bytes.end(), block.frames[i].begin(), block.frames[i].end());
    }
    if (block.in_group) {
      if (block.duration) ebml_.UInt(kBlockDuration, *block.duration);
      if (!block.key) ebml_.Int(kReferenceBlock, block.reference);
      ebml_.EndMaster(group);
    }
    // Unlaced frames are one frame to a parser.
    if (block.lacing == Lacing::kNone && places.size() > 1) {
      places.resize(1);
      places[0].len = static_cast<int64_t>(payload);
    }
    for (FramePlace& place : places) {
      place.block_span = {start, ebml_.offset() - start};
      out_->frames.push_back(place);
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

Track Track::Subtitle(uint64_t number, std::string codec_id) {
  Track track;
  track.number = number;
  track.type = kSubtitleTrack;
  track.codec_id = std::move(codec_id);
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

Bytes Corrupted(Bytes bytes, size_t offset, const Bytes& replacement) {
  if (offset + replacement.size() > bytes.size()) {
    bytes.resize(offset + replacement.size());
  }
  std::copy(replacement.begin(), replacement.end(), bytes.begin() + offset);
  return bytes;
}

}  // namespace mkvtest
