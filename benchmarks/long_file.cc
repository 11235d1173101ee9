#include "benchmarks/long_file.h"

#include <cstdio>

namespace mkvbench {

namespace {

// A 720p video track of 25 frames a second and an AAC track of 50, with no
// clusters yet.
mkvtest::MkvFile EmptyFile(int seconds) {
  using namespace mkvtest;
  Track video = VideoTrack(1, "V_MPEG4/ISO/AVC");
  video.width = 1280;
  video.height = 720;
  video.default_duration = 40000000;
  Track audio = AudioTrack(2, "A_AAC");
  audio.default_duration = 20000000;
  return MkvFile{{video, audio}, {}, 1000000, seconds * 1000.0};
}

// One second of frames from `second` on, a key frame first; video frames of
// `keyBytes` and `videoBytes`, audio frames of `audioBytes`, none if 0.
mkvtest::Cluster SecondOf(int second, size_t keyBytes, size_t videoBytes, size_t audioBytes) {
  mkvtest::Cluster cluster{static_cast<uint64_t>(second) * 1000, {}};
  for (int i = 0; i < 50; ++i) {
    const int16_t time = static_cast<int16_t>(i * 20);
    const auto seed = static_cast<uint8_t>(i);
    const size_t bytes = i == 0 ? keyBytes : videoBytes;
    if (i % 2 == 0) cluster.blocks.push_back({1, time, i == 0, {mkvtest::Payload(bytes, seed)}});
    if (audioBytes == 0) continue;
    cluster.blocks.push_back({2, time, true, {mkvtest::Payload(audioBytes, seed)}});
  }
  return cluster;
}

}  // namespace

mkvtest::Bytes LongFileBytes(int seconds, int payloadScale) {
  mkvtest::MkvFile file = EmptyFile(seconds);
  for (int second = 0; second < seconds; ++second) {
    file.clusters.push_back(
        SecondOf(second, 20000 * payloadScale, 3000 * payloadScale, 300 * payloadScale));
  }
  return mkvtest::Serialize(file);
}

mkvtest::Bytes SparseFileBytes(int clusters, int audioEvery) {
  mkvtest::MkvFile file = EmptyFile(clusters);
  for (int second = 0; second < clusters; ++second)
    file.clusters.push_back(SecondOf(second, 8000, 600, second % audioEvery == 0 ? 300 : 0));
  return mkvtest::Serialize(file);
}

void WriteLongFile(const std::string& path, int minutes) {
  const mkvtest::Bytes bytes = LongFileBytes(minutes * 60);
  FILE* out = std::fopen(path.c_str(), "wb");
  if (!out) return;
  std::fwrite(bytes.data(), 1, bytes.size(), out);
  std::fclose(out);
}

}  // namespace mkvbench
