#include "tests/support/mkv_writer.h"

#include <cstring>
#include <utility>

namespace mkvtest {
namespace {

// An EBML vint of the fewest bytes, avoiding the all-ones "unknown" value.
void AppendVint(Bytes* out, uint64_t value) {
  int length = 1;
  while (length < 8 && value >= (uint64_t{1} << (7 * length)) - 1) ++length;
  const uint64_t marked = value | uint64_t{1} << (7 * length);
  for (int i = length - 1; i >= 0; --i) out->push_back(static_cast<uint8_t>(marked >> (8 * i)));
}

Bytes UInt(uint64_t value) {
  Bytes bytes;
  do bytes.insert(bytes.begin(), static_cast<uint8_t>(value));
  while (value >>= 8);
  return bytes;
}

Bytes Float(double value) {
  uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  Bytes bytes = UInt(bits);
  bytes.insert(bytes.begin(), 8 - bytes.size(), 0);
  return bytes;
}

Bytes Text(const std::string& text) { return Bytes(text.begin(), text.end()); }

// Appends the element `id` (its bytes as Matroska lists them) around `body`.
void Put(Bytes* out, uint32_t id, const Bytes& body) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    if (id >> shift) out->push_back(static_cast<uint8_t>(id >> shift));
  }
  AppendVint(out, body.size());
  out->insert(out->end(), body.begin(), body.end());
}

Bytes TrackEntry(const Track& track) {
  Bytes entry, settings;
  Put(&entry, 0xD7, UInt(track.number));
  Put(&entry, 0x73C5, UInt(track.number));  // TrackUID
  Put(&entry, 0x83, UInt(track.type));
  if (track.codec_id) Put(&entry, 0x86, Text(*track.codec_id));
  if (track.codec_private) Put(&entry, 0x63A2, *track.codec_private);
  if (track.default_duration) Put(&entry, 0x23E383, UInt(*track.default_duration));
  if (track.name) Put(&entry, 0x536E, Text(*track.name));
  if (track.width) Put(&settings, 0xB0, UInt(track.width));
  if (track.height) Put(&settings, 0xBA, UInt(track.height));
  if (track.display_width) Put(&settings, 0x54B0, UInt(track.display_width));
  if (track.display_height) Put(&settings, 0x54BA, UInt(track.display_height));
  if (track.rate) Put(&settings, 0xB5, Float(track.rate));
  if (track.channels) Put(&settings, 0x9F, UInt(track.channels));
  if (track.type == 1 || track.type == 2) Put(&entry, track.type == 1 ? 0xE0 : 0xE1, settings);
  return entry;
}

Bytes SimpleBlock(const Block& block) {
  Bytes bytes;
  AppendVint(&bytes, block.track);
  bytes.push_back(static_cast<uint8_t>(static_cast<uint16_t>(block.time) >> 8));
  bytes.push_back(static_cast<uint8_t>(block.time));
  const bool laced = block.frames.size() > 1;
  bytes.push_back((block.key ? 0x80 : 0) | (laced ? 0x04 : 0));
  if (laced) bytes.push_back(static_cast<uint8_t>(block.frames.size() - 1));
  for (const Bytes& frame : block.frames) bytes.insert(bytes.end(), frame.begin(), frame.end());
  return bytes;
}

}  // namespace

Track VideoTrack(uint64_t number, std::optional<std::string> codec) {
  Track track;
  track.number = number;
  track.codec_id = std::move(codec);
  track.width = 64;
  track.height = 48;
  return track;
}

Track AudioTrack(uint64_t number, std::optional<std::string> codec) {
  Track track = VideoTrack(number, std::move(codec));
  track.type = 2;
  track.width = track.height = 0;
  track.rate = 48000;
  track.channels = 2;
  return track;
}

Bytes Serialize(const MkvFile& file) {
  Bytes header, info, tracks, segment, out;
  Put(&header, 0x4282, Text("matroska"));  // DocType
  Put(&header, 0x4287, UInt(4));           // DocTypeVersion
  Put(&header, 0x4285, UInt(2));           // DocTypeReadVersion
  Put(&info, 0x2AD7B1, UInt(file.scale));
  if (file.duration) Put(&info, 0x4489, Float(*file.duration));
  for (const Track& track : file.tracks) Put(&tracks, 0xAE, TrackEntry(track));
  Put(&segment, 0x1549A966, info);
  Put(&segment, 0x1654AE6B, tracks);
  for (const Cluster& cluster : file.clusters) {
    Bytes body;
    Put(&body, 0xE7, UInt(cluster.time));
    for (const Block& block : cluster.blocks) Put(&body, 0xA3, SimpleBlock(block));
    Put(&segment, 0x1F43B675, body);
  }
  Put(&out, 0x1A45DFA3, header);
  Put(&out, 0x18538067, segment);
  return out;
}

Bytes Payload(size_t size, uint8_t first) {
  Bytes payload(size);
  for (size_t i = 0; i < size; ++i) payload[i] = static_cast<uint8_t>(first + i);
  return payload;
}

}  // namespace mkvtest
