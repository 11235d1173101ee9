#include "benchmarks/long_file.h"

#include <cstdio>

#include "tests/support/mkv_writer.h"

namespace mkvbench {

void WriteLongFile(const std::string& path, int minutes) {
  using namespace mkvtest;
  Track video = VideoTrack(1, "V_MPEG4/ISO/AVC");
  video.width = 1280;
  video.height = 720;
  video.default_duration = 40000000;
  Track audio = AudioTrack(2, "A_AAC");
  audio.default_duration = 20000000;
  MkvFile file({video, audio}, {}, 1000000, minutes * 60000.0);
  for (int second = 0; second < minutes * 60; ++second) {
    Cluster cluster{static_cast<uint64_t>(second) * 1000, {}};
    for (int i = 0; i < 50; ++i) {
      const int16_t time = static_cast<int16_t>(i * 20);
      const auto seed = static_cast<uint8_t>(i);
      if (i % 2 == 0) cluster.blocks.push_back({1, time, i == 0, {Payload(i == 0 ? 20000 : 3000, seed)}});
      cluster.blocks.push_back({2, time, true, {Payload(300, seed)}});
    }
    file.clusters.push_back(std::move(cluster));
  }
  const Bytes bytes = Serialize(file);
  FILE* out = std::fopen(path.c_str(), "wb");
  if (!out) return;
  std::fwrite(bytes.data(), 1, bytes.size(), out);
  std::fclose(out);
}

}  // namespace mkvbench
