// The committed media files (tests/data/media, samples) and the ffprobe
// packet lists beside them, which tests/data/make_media.sh made.
#ifndef MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_
#define MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mkvtest {

// Absolute path of NAME.mkv, or NAME + suffix; "sample" is the bundled file.
std::string MediaPath(const std::string& name, const std::string& suffix = ".mkv");

// One frame as ffprobe saw it, in file order, laced blocks split. `pts` is
// in ticks; ffprobe interpolates it for the later frames of a laced block,
// or leaves it out.
struct Packet {
  int stream = 0;  // the track's index in the Tracks element
  std::optional<int64_t> pts;
  size_t size = 0;
  std::string md5;  // lower-case hex
};

// The packet list of a media file by base name; empty if it is missing.
std::vector<Packet> ReadPackets(const std::string& name);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_
