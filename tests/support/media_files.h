// The committed media files (tests/data/media, samples) and the ffprobe
// lists beside them, which tests/data/make_media.sh made.
#ifndef MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_
#define MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mkvtest {

// Media files by base name, e.g. "h264_aac"; "sample" is the bundled one.
inline constexpr const char* kMediaNames[] = {
    "h264_aac", "hevc_mp3", "h264_mp3_laced", "h264_mp3_wide_pixels",
    "h264_aac_scale100us", "aac_only", "mpeg4_aac", "sample"};

// Absolute path of NAME.mkv, or of NAME.packets.csv with suffix
// ".packets.csv".
std::string MediaPath(const std::string& name, const std::string& suffix = ".mkv");

// One frame as ffprobe saw it, in file order; laced blocks give one per
// frame. `pts` is in ticks of the segment's timecode scale; ffprobe
// interpolates it for the later frames of a laced block, or leaves it out.
struct Packet {
  int stream = 0;  // the index of the track in the Tracks element
  std::optional<int64_t> pts;
  size_t size = 0;
  std::string md5;  // lower-case hex
};

// The packet list of a media file by base name. Empty if the file is missing.
std::vector<Packet> ReadPackets(const std::string& name);

// MD5 of the bytes as lower-case hex, to compare with Packet::md5.
std::string Md5Hex(const void* data, size_t size);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_
