// A Matroska writer for layouts that no muxer makes: blocks of unknown
// tracks, clusters out of order, tracks without codec, size or duration.
#ifndef MKVSOURCE_TESTS_SUPPORT_MKV_WRITER_H_
#define MKVSOURCE_TESTS_SUPPORT_MKV_WRITER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/temp_file.h"

namespace mkvtest {

// One TrackEntry, with a Video (type 1) or Audio (type 2) element; absent
// optionals and zeros are not written.
struct Track {
  uint64_t number = 1;
  uint64_t type = 1;
  std::optional<std::string> codec_id;
  std::optional<Bytes> codec_private;
  std::optional<uint64_t> default_duration;  // nanoseconds
  std::optional<std::string> name;
  uint64_t width = 0, height = 0, display_width = 0, display_height = 0, channels = 0;
  double rate = 0;
};
// 64x48 video; audio of 48 kHz, 2 channels.
Track VideoTrack(uint64_t number = 1, std::optional<std::string> codec = "V_MPEG4/ISO/AVC");
Track AudioTrack(uint64_t number = 2, std::optional<std::string> codec = "A_AAC");

// A SimpleBlock; several frames are laced with fixed sizes, so must be of one size.
struct Block {
  uint64_t track = 1;  // also one that no track has
  int16_t time = 0;    // relative to the cluster's
  bool key = true;
  std::vector<Bytes> frames;
};

struct Cluster {
  uint64_t time = 0;  // ticks
  std::vector<Block> blocks;
};

struct MkvFile {
  std::vector<Track> tracks;
  std::vector<Cluster> clusters;
  uint64_t scale = 1000000;             // TimecodeScale, ns a tick
  std::optional<double> duration = {};  // ticks
};

Bytes Serialize(const MkvFile& file);
// Serializes to a new temporary file; returns its path.
inline std::string WriteMkv(const MkvFile& file) { return WriteTemp(Serialize(file)); }

// `size` bytes counting up from `first`, so that frames of other seeds differ.
Bytes Payload(size_t size, uint8_t first = 0);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_MKV_WRITER_H_
