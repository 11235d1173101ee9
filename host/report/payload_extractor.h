#ifndef HOST_REPORT_PAYLOAD_EXTRACTOR_H_
#define HOST_REPORT_PAYLOAD_EXTRACTOR_H_

#include <fstream>
#include <map>
#include <string>

#include "host/play/chunk_sink.h"

namespace kvlhost {

// Writes each stream's payloads, concatenated as delivered, to
// DIR/stream<N>-<kind>.bin, and its codec private data to
// DIR/stream<N>-<kind>.private. A file that can't be written throws a
// HostError with kHostFailure.
class PayloadExtractor : public ChunkSink {
 public:
  explicit PayloadExtractor(std::string directory);

  void onCodecData(const StreamReport& stream, const std::vector<uint8_t>& data) override;
  void onChunk(const StreamReport& stream, const KVL::MediaChunk& chunk,
               const uint8_t* payload, size_t size) override;

  std::string PathOf(const StreamReport& stream, const char* suffix) const;

 private:
  std::ofstream& PayloadFile(const StreamReport& stream);

  std::string directory_;
  std::map<size_t, std::ofstream> payloads_;
};

}  // namespace kvlhost

#endif  // HOST_REPORT_PAYLOAD_EXTRACTOR_H_
