#include "host/play/stream_facts.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "plugin/kvl/properties.h"

namespace kvlhost {
namespace {

// The plug-in gives each video track a reader at the track's own position
// 0 to n-1, in order, and one audio reader that always reads position 1.
unsigned int TrackPosition(uint32_t mediaType, unsigned int videoOrdinal) {
  return mediaType == KVL::kMediaAudio ? 1 : videoOrdinal;
}

void DescribeProperties(KVL::StreamInterface& stream, StreamReport& report) {
  KVL::Properties* properties = stream.properties();
  if (const auto* image = dynamic_cast<KVL::ImageProperties*>(properties)) {
    report.width = image->width;
    report.height = image->height;
    report.aspectX = image->aspectX;
    report.aspectY = image->aspectY;
  } else if (const auto* audio = dynamic_cast<KVL::AudioProperties*>(properties)) {
    report.sampleRate = audio->sampleRate;
    report.channels = audio->channels;
  }
}

}  // namespace

std::string FormatText(const KVL::FormatDescriptor& format) {
  if (format.mediaType == KVL::kMediaAudio) {
    uint32_t tag = 0;
    std::memcpy(&tag, format.code, sizeof(tag));
    char text[16];
    std::snprintf(text, sizeof(text), "0x%08x", tag);
    return text;
  }
  return std::string(format.code, strnlen(format.code, sizeof(format.code)));
}

std::string MediaKind(uint32_t mediaType) {
  switch (mediaType) {
    case KVL::kMediaVideo: return "video";
    case KVL::kMediaAudio: return "audio";
    default: return "unknown";
  }
}

StreamReport DescribeStream(KVL::StreamInterface& stream, size_t position,
                            unsigned int videoOrdinal) {
  StreamReport report;
  report.index = position;
  report.uid = stream.streamUID();
  report.duration = stream.duration();
  DescribeProperties(stream, report);
  const KVL::FormatDescriptor* format = stream.format();
  if (!format) {
    report.kind = MediaKind(0);
    return report;
  }
  report.kind = MediaKind(format->mediaType);
  report.track = TrackPosition(format->mediaType, videoOrdinal);
  report.format = FormatText(*format);
  return report;
}

std::vector<uint8_t> TakeCodecData(KVL::StreamInterface& stream) {
  KVL::List<KVL::TypedMediaBuffer*> list;
  stream.getCodecData(&list);
  std::vector<uint8_t> bytes;
  for (const KVL::Node<KVL::TypedMediaBuffer*>* node = list.head(); node; node = node->next) {
    KVL::TypedMediaBuffer* buffer = node->value;
    if (!buffer) continue;
    const auto* data = static_cast<const uint8_t*>(buffer->lock());
    if (data) bytes.insert(bytes.end(), data, data + buffer->chunkSize());
    buffer->unlock();
    std::free(buffer->lock());
    buffer->unlock();
    delete buffer;
  }
  return bytes;
}

}  // namespace kvlhost
