#include "tests/support/source_harness.h"

#include "plugin/kvl/buffer_allocator.h"
#include "tests/support/media_files.h"

namespace mkvtest {

std::unique_ptr<KVL::MediaSource> SourceOf(const std::string& uri) {
  const auto text = [](const std::string& s) {
    return KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(s.c_str()));
  };
  return std::make_unique<KVL::MediaSource>(text(uri), text("video/x-matroska"));
}

std::string Text(const KVL::vorq_string<unsigned char>& text) {
  const std::basic_string<unsigned char> bytes = text.toStlString();
  return std::string(bytes.begin(), bytes.end());
}

SourceHarness::SourceHarness(KVL::IMkvReader* reader)
    : source(reader ? new KVL::MKVSource(&context, reader) : new KVL::MKVSource(&context)) {
  control.setContainer(source.get());
  source->init(&control, 1000);
}

SourceHarness::~SourceHarness() {
  if (session) source->closeSavedSession(session);
}

bool SourceHarness::Probe(const std::string& path) {
  media = SourceOf(FileUri(path));
  return source->canPlay(*media, nullptr, &session, &refused);
}

bool SourceHarness::Open(const std::string& path, bool openTitle) {
  if (!Probe(path)) return false;
  const int opened = source->open(session);
  session = nullptr;
  if (opened != 0 || !source->getTitles().head()) return false;
  titleUID = source->getTitles().head()->value;
  control.calls.clear();
  return !openTitle || source->openTitle(titleUID) == 0;
}

KVL::StreamInterface* SourceHarness::opened(size_t i) {
  KVL::StreamInterface* stream = control.streams().at(i);
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

MkvFile VideoAndAudioFile() {
  MkvFile file;
  file.info.duration = 2000;
  file.tracks = {Track::Video(1, "V_MPEG4/ISO/AVC", 64, 48), Track::Audio(2, "A_AAC", 48000, 2)};
  for (uint64_t time : {0, 1000}) {
    file.clusters.push_back(Cluster{time, {SimpleBlock(1, 0, true, {Payload(50 + time / 100)}),
                                           SimpleBlock(2, 0, true, {Payload(20)})}});
  }
  return file;
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
