#include "tests/streams/opened_title.h"

#include "plugin/kvl/buffer_allocator.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_file.h"

namespace mkvtest {
namespace {

KVL::vorq_string<unsigned char> Text(const std::string& text) {
  return KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(text.c_str()));
}

}  // namespace

OpenedTitle::OpenedTitle(const std::string& path, bool openTitle)
    : media(Text("file://" + path), Text("video/x-matroska")),
      source(new KVL::MKVSource(nullptr)) {
  control.container = source.get();
  source->init(&control, 0);
  void* session = nullptr;
  playable = source->canPlay(media, nullptr, &session, nullptr);
  if (!playable) return;
  openResult = source->open(session);
  const KVL::List<unsigned long long> titles = source->getTitles();
  if (titles.head()) titleUID = titles.head()->value;
  if (openTitle) source->openTitle(titleUID);
}

KVL::StreamInterface* OpenedTitle::opened(size_t i) {
  KVL::StreamInterface* stream = control.added.at(i);
  stream->openStream(nullptr);
  return stream;
}

std::string WriteAv(std::vector<Cluster> clusters, std::vector<Track> tracks) {
  MkvFile file;
  file.tracks = tracks.empty() ? std::vector<Track>{Track::Video(1, "V_MPEG4/ISO/AVC", 64, 48),
                                                    Track::Audio(2, "A_AAC", 48000, 2)}
                               : std::move(tracks);
  file.clusters = std::move(clusters);
  return WriteTemp(file);
}

std::vector<Chunk> ReadChunks(KVL::StreamInterface* stream, size_t limit, int* last) {
  std::vector<Chunk> chunks;
  while (chunks.size() < limit) {
    KVL::MediaChunk* chunk = nullptr;
    const int result = stream->readStream(&chunk);
    if (last) *last = result;
    if (!chunk) break;
    const auto* data = static_cast<const char*>(chunk->lock());
    chunks.push_back({chunk->startTime, chunk->duration, std::string(data, chunk->chunkSize())});
    chunk->unlock();
    chunk->allocator().freeBuffer(chunk);
  }
  return chunks;
}

std::string Describe(const std::vector<Chunk>& chunks) {
  std::string text;
  for (const Chunk& chunk : chunks) {
    text += std::to_string(chunk.start) + "+" + std::to_string(chunk.duration) + " " +
            Md5Hex(chunk.bytes.data(), chunk.bytes.size()) + "\n";
  }
  return text;
}

}  // namespace mkvtest
