// A Matroska writer for tests: a file is described as plain data (MkvFile),
// serialized to bytes with the position of every frame, and usually written
// to a temporary file (temp_file.h). It writes exactly what it is given, so
// tests can also build files that a muxer never would: unknown track
// numbers, empty clusters, odd lacing, missing elements.
//
//   MkvFile file;
//   file.tracks.push_back(Track::Video(1, "V_MPEG4/ISO/AVC", 320, 240));
//   file.clusters.push_back(Cluster{1000, {SimpleBlock(1, 0, true, {frame})}});
//   SerializedMkv mkv = Serialize(file);  // mkv.frames[0].pos, .len ...
//   std::string path = WriteTemp(file);
#ifndef MKVSOURCE_TESTS_SUPPORT_MKV_WRITER_H_
#define MKVSOURCE_TESTS_SUPPORT_MKV_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ebml_writer.h"

namespace mkvtest {

enum TrackType : uint64_t {
  kVideoTrack = 1,
  kAudioTrack = 2,
};

struct VideoSettings {
  std::optional<uint64_t> pixel_width;
  std::optional<uint64_t> pixel_height;
};

struct AudioSettings {
  std::optional<double> sampling_frequency;
  std::optional<uint64_t> channels;
};

// One TrackEntry. Absent optionals are not written at all; a present
// codec_private of 0 bytes is written as an empty element.
struct Track {
  uint64_t number = 1;
  uint64_t uid = 0;  // 0 writes the track number as the UID
  uint64_t type = kVideoTrack;
  std::optional<std::string> codec_id;
  std::optional<Bytes> codec_private;
  std::optional<uint64_t> default_duration;  // nanoseconds
  std::optional<std::string> name;
  std::optional<VideoSettings> video;  // the Video element
  std::optional<AudioSettings> audio;  // the Audio element

  static Track Video(uint64_t number, std::string codec_id, uint64_t width,
                     uint64_t height);
  static Track Audio(uint64_t number, std::string codec_id,
                     double sampling_frequency, uint64_t channels);
};

// In the order of their flag values: lacing bits 0 to 3.
enum class Lacing : uint8_t { kNone, kXiph, kFixed, kEbml };

// A SimpleBlock, or a Block inside a BlockGroup. With Lacing::kNone all
// frames are written back to back as one frame; kFixed writes the frames
// as they are, even if their sizes differ. A laced block holds 1 to 256
// frames.
struct Block {
  uint64_t track = 1;  // any number, also one that no track has
  int16_t timecode = 0;  // relative to the cluster's Timecode
  bool key = true;
  Lacing lacing = Lacing::kNone;
  std::vector<Bytes> frames;
  bool in_group = false;  // BlockGroup instead of SimpleBlock
  // BlockGroup only; a non-key one gets a ReferenceBlock of -1.
  std::optional<uint64_t> duration;  // BlockDuration, in ticks
};

Block SimpleBlock(uint64_t track, int16_t timecode, bool key,
                  std::vector<Bytes> frames, Lacing lacing = Lacing::kNone);
Block GroupBlock(uint64_t track, int16_t timecode, bool key,
                 std::vector<Bytes> frames,
                 std::optional<uint64_t> duration = std::nullopt,
                 Lacing lacing = Lacing::kNone);

struct Cluster {
  uint64_t timecode = 0;  // in ticks of the timecode scale
  std::vector<Block> blocks;
};

struct Info {
  std::optional<uint64_t> timecode_scale = 1000000;  // ns per tick
  std::optional<double> duration;  // in ticks, as Matroska stores it
};

struct MkvFile {
  Info info;
  std::vector<Track> tracks;
  std::vector<Cluster> clusters;
};

// Where an element landed: from the first byte of its ID to its end.
struct Span {
  size_t offset = 0;
  size_t size = 0;
  size_t end() const { return offset + size; }
};

// Where one frame's bytes landed, in the order of the file.
struct FramePlace {
  size_t cluster = 0;  // indices into MkvFile::clusters ...
  size_t block = 0;    // ... Cluster::blocks ...
  size_t frame = 0;    // ... and Block::frames
  uint64_t track = 0;
  int64_t pos = 0;  // absolute file offset of the frame's first byte
  int64_t len = 0;
};

struct SerializedMkv {
  Bytes bytes;
  Span ebml_header;
  Span tracks;
  std::vector<Span> clusters;
  std::vector<FramePlace> frames;
};

SerializedMkv Serialize(const MkvFile& file);

// A payload of `size` bytes counting up from `first`, so that frames of
// different seeds differ.
Bytes Payload(size_t size, uint8_t first = 0);

// The first `size` bytes of `bytes`: a file cut short.
Bytes Truncated(const Bytes& bytes, size_t size);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_MKV_WRITER_H_
