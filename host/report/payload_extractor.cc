#include "host/report/payload_extractor.h"

#include "host/engine_side/host_error.h"

namespace kvlhost {
namespace {

void Write(std::ofstream& file, const void* data, size_t size, const std::string& path) {
  file.write(static_cast<const char*>(data), static_cast<std::streamsize>(size));
  if (!file) throw HostError(kHostFailure, "cannot write " + path);
}

}  // namespace

PayloadExtractor::PayloadExtractor(std::string directory) : directory_(std::move(directory)) {}

std::string PayloadExtractor::PathOf(const StreamReport& stream, const char* suffix) const {
  return directory_ + "/stream" + std::to_string(stream.index) + "-" + stream.kind + suffix;
}

void PayloadExtractor::onCodecData(const StreamReport& stream, const std::vector<uint8_t>& data) {
  PayloadFile(stream);
  if (data.empty()) return;
  const std::string path = PathOf(stream, ".private");
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  Write(file, data.data(), data.size(), path);
}

void PayloadExtractor::onChunk(const StreamReport& stream, const KVL::MediaChunk&,
                               const uint8_t* payload, size_t size) {
  Write(PayloadFile(stream), payload, size, PathOf(stream, ".bin"));
}

// Made on first use, so that a stream without chunks still gets its file.
std::ofstream& PayloadExtractor::PayloadFile(const StreamReport& stream) {
  std::ofstream& file = payloads_[stream.index];
  if (file.is_open()) return file;
  const std::string path = PathOf(stream, ".bin");
  file.open(path, std::ios::binary | std::ios::trunc);
  if (!file) throw HostError(kHostFailure, "cannot write " + path);
  return file;
}

}  // namespace kvlhost
