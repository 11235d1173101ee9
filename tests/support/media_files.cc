#include "tests/support/media_files.h"

#include <fstream>
#include <sstream>

namespace mkvtest {

std::string MediaPath(const std::string& name, const std::string& suffix) {
  const std::string folder = name == "sample" ? "/samples/" : "/tests/data/media/";
  return MKVSOURCE_SOURCE_DIR + folder + name + suffix;
}

std::vector<Packet> ReadPackets(const std::string& name) {
  std::vector<Packet> packets;
  std::ifstream in(MediaPath(name, ".packets.csv"));
  std::string line, stream, pts, size, md5;
  std::getline(in, line);  // the header
  // stream,pts,size,md5 without quoting, which is all ffprobe wrote.
  while (std::getline(in, line)) {
    std::stringstream fields(line);
    if (!std::getline(fields, stream, ',') || !std::getline(fields, pts, ',') ||
        !std::getline(fields, size, ',') || !std::getline(fields, md5)) {
      continue;
    }
    packets.push_back({std::stoi(stream), std::nullopt, std::stoul(size), md5});
    if (!pts.empty()) packets.back().pts = std::stoll(pts);
  }
  return packets;
}

}  // namespace mkvtest
