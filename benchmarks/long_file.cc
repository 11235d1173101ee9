#include "benchmarks/long_file.h"

#include <cstdio>

namespace mkvbench {

mkvtest::Bytes LongFileBytes(int seconds, int payloadScale) {
  using namespace mkvtest;
  Track video = VideoTrack(1, "V_MPEG4/ISO/AVC");
  video.width = 1280;
  video.height = 720;
  video.default_duration = 40000000;
  Track audio = AudioTrack(2, "A_AAC");
  audio.default_duration = 20000000;
  MkvFile file{{video, audio}, {}, 1000000, seconds * 1000.0};
  for (int second = 0; second < seconds; ++second) {
    Cluster cluster{static_cast<uint64_t>(second) * 1000, {}};
    for (int i = 0; i < 50; ++i) {
      const int16_t time = static_cast<int16_t>(i * 20);
      const auto seed = static_cast<uint8_t>(i);
      const size_t videoBytes = (i == 0 ? 20000 : 3000) * payloadScale;
      if (i % 2 == 0) cluster.blocks.push_back({1, time, i == 0, {Payload(videoBytes, seed)}});
      cluster.blocks.push_back({2, time, true, {Payload(300 * payloadScale, seed)}});
    }
    file.clusters.push_back(std::move(cluster));
  }
  return Serialize(file);
}

void WriteLongFile(const std::string& path, int minutes) {
  const mkvtest::Bytes bytes = LongFileBytes(minutes * 60);
  FILE* out = std::fopen(path.c_str(), "wb");
  if (!out) return;
  std::fwrite(bytes.data(), 1, bytes.size(), out);
  std::fclose(out);
}

}  // namespace mkvbench
