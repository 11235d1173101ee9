#include "host/report/packet_table.h"

#include <md5.h>

namespace kvlhost {

PacketTable::PacketTable(std::ostream& out) : out_(out) { out_ << kHeader << '\n'; }

void PacketTable::onChunk(const StreamReport& stream, const KVL::MediaChunk& chunk,
                          const uint8_t* payload, size_t size) {
  char md5[MD5_DIGEST_STRING_LENGTH];
  MD5Data(payload, size, md5);
  out_ << stream.index << ',' << stream.kind << ',' << stream.track << ',' << chunk.startTime
       << ',' << chunk.duration << ',' << size << ',' << md5 << '\n';
}

}  // namespace kvlhost
