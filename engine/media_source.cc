#include "plugin/kvl/media_source.h"

namespace KVL {

ReadInterfaces::ReadInterfaces() : slots_{} {}
ReadInterfaces::~ReadInterfaces() = default;

MediaSource::MediaSource(const vorq_string<unsigned char>& uri,
                         const vorq_string<unsigned char>& mimeType)
    : uri_(uri), mimeType_(mimeType) {}

}  // namespace KVL
