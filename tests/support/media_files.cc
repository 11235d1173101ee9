#include "tests/support/media_files.h"

#include <md5.h>

#include <cstdlib>
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
  std::string line;
  std::getline(in, line);  // the header
  while (std::getline(in, line)) {
    // stream,pts,size,md5 without quoting, which is all ffprobe wrote.
    std::vector<std::string> fields;
    std::stringstream stream(line);
    for (std::string field; std::getline(stream, field, ',');) fields.push_back(field);
    if (fields.size() != 4) continue;
    Packet packet;
    packet.stream = std::atoi(fields[0].c_str());
    if (!fields[1].empty()) packet.pts = std::strtoll(fields[1].c_str(), nullptr, 10);
    packet.size = std::strtoull(fields[2].c_str(), nullptr, 10);
    packet.md5 = fields[3];
    packets.push_back(packet);
  }
  return packets;
}

std::string Md5Hex(const void* data, size_t size) {
  char hex[MD5_DIGEST_STRING_LENGTH];
  MD5Data(static_cast<const uint8_t*>(data), size, hex);
  return hex;
}

}  // namespace mkvtest
