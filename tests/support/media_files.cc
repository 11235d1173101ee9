#include "tests/support/media_files.h"

#include <md5.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace mkvtest {
namespace {

// Splits one line of a CSV without quoting, which is all ffprobe wrote.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  std::stringstream stream(line);
  std::string field;
  while (std::getline(stream, field, ',')) fields.push_back(field);
  if (!line.empty() && line.back() == ',') fields.emplace_back();
  return fields;
}

// The data lines of a CSV, header skipped, each with `count` fields.
std::vector<std::vector<std::string>> Rows(const std::string& path, size_t count) {
  std::vector<std::vector<std::string>> rows;
  std::ifstream in(path);
  std::string line;
  if (!std::getline(in, line)) return rows;
  while (std::getline(in, line)) {
    std::vector<std::string> fields = Fields(line);
    if (fields.size() == count) rows.push_back(std::move(fields));
  }
  return rows;
}

int64_t Number(const std::string& text) { return std::strtoll(text.c_str(), nullptr, 10); }

}  // namespace

std::string MediaPath(const std::string& name, const std::string& suffix) {
  const std::string folder = name == "sample" ? "/samples/" : "/tests/data/media/";
  return MKVSOURCE_SOURCE_DIR + folder + name + suffix;
}

std::vector<Packet> ReadPackets(const std::string& name) {
  std::vector<Packet> packets;
  for (const auto& row : Rows(MediaPath(name, ".packets.csv"), 4)) {
    Packet packet;
    packet.stream = static_cast<int>(Number(row[0]));
    if (!row[1].empty()) packet.pts = Number(row[1]);
    packet.size = static_cast<size_t>(Number(row[2]));
    packet.md5 = row[3];
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
