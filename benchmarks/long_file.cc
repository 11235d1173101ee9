#include "benchmarks/long_file.h"

#include <cstdio>

#include "tests/support/mkv_writer.h"

namespace mkvbench {

void WriteLongFile(const std::string& path, int minutes) {
  using namespace mkvtest;
  MkvFile file;
  file.info.duration = minutes * 60000.0;
  file.tracks.push_back(Track::Video(1, "V_MPEG4/ISO/AVC", 1280, 720));
  file.tracks.back().default_duration = 40000000;
  file.tracks.push_back(Track::Audio(2, "A_AAC", 48000, 2));
  file.tracks.back().default_duration = 20000000;
  for (int second = 0; second < minutes * 60; ++second) {
    Cluster cluster{static_cast<uint64_t>(second) * 1000, {}};
    for (int i = 0; i < 50; ++i) {
      if (i % 2 == 0)
        cluster.blocks.push_back(SimpleBlock(1, static_cast<int16_t>(i * 20), i == 0,
                                             {Payload(i == 0 ? 20000 : 3000, i)}));
      cluster.blocks.push_back(SimpleBlock(2, static_cast<int16_t>(i * 20), true, {Payload(300, i)}));
    }
    file.clusters.push_back(std::move(cluster));
  }
  const Bytes bytes = Serialize(file).bytes;
  FILE* out = std::fopen(path.c_str(), "wb");
  if (!out) return;
  std::fwrite(bytes.data(), 1, bytes.size(), out);
  std::fclose(out);
}

}  // namespace mkvbench
