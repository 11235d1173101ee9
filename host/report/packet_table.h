#ifndef HOST_REPORT_PACKET_TABLE_H_
#define HOST_REPORT_PACKET_TABLE_H_

#include <ostream>

#include "host/play/chunk_sink.h"

namespace kvlhost {

// One CSV row per chunk in delivery order:
// stream,kind,track,start,duration,size,md5 (ticks, bytes, lower-case hex).
class PacketTable : public ChunkSink {
 public:
  static constexpr const char* kHeader = "stream,kind,track,start,duration,size,md5";

  // Writes the header at once.
  explicit PacketTable(std::ostream& out);

  void onCodecData(const StreamReport&, const std::vector<uint8_t>&) override {}
  void onChunk(const StreamReport& stream, const KVL::MediaChunk& chunk,
               const uint8_t* payload, size_t size) override;

 private:
  std::ostream& out_;
};

}  // namespace kvlhost

#endif  // HOST_REPORT_PACKET_TABLE_H_
