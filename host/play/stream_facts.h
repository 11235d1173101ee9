#ifndef HOST_PLAY_STREAM_FACTS_H_
#define HOST_PLAY_STREAM_FACTS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "host/play/play_report.h"
#include "plugin/kvl/format_descriptor.h"
#include "plugin/kvl/stream_interface.h"

namespace kvlhost {

// A format as text: the format text of a video descriptor, the 32-bit tag
// of an audio descriptor as hex ("0x000000ff").
std::string FormatText(const KVL::FormatDescriptor& format);
std::string MediaKind(uint32_t mediaType);

// What a stream tells of itself before reading: kind, format, picture or
// sound properties, duration. `position` is the stream's place in the
// title's stream list; `videoOrdinal` how many video streams came before it.
StreamReport DescribeStream(KVL::StreamInterface& stream, size_t position,
                            unsigned int videoOrdinal);

// Takes the stream's codec private data over and returns its bytes; empty
// if the stream has none.
std::vector<uint8_t> TakeCodecData(KVL::StreamInterface& stream);

}  // namespace kvlhost

#endif  // HOST_PLAY_STREAM_FACTS_H_
