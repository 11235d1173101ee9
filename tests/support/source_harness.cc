#include "tests/support/source_harness.h"

#include <unistd.h>

#include <cstdio>

#include "plugin/kvl/buffer_allocator.h"

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
  control.container = source.get();
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
  KVL::StreamInterface* stream = control.stream(i);
  stream->openStream(nullptr);
  return stream;
}

std::string WriteAv(std::vector<Cluster> clusters, std::vector<Track> tracks) {
  if (tracks.empty()) tracks = {VideoTrack(), AudioTrack()};
  return WriteMkv(MkvFile{std::move(tracks), std::move(clusters)});
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

std::string OutputOf(int fd, const std::function<void()>& run) {
  std::fflush(nullptr);
  FILE* file = std::tmpfile();
  const int saved = dup(fd);
  dup2(fileno(file), fd);
  run();
  std::fflush(nullptr);
  dup2(saved, fd);
  close(saved);
  std::string text;
  std::rewind(file);
  for (int c; (c = std::fgetc(file)) != EOF;) text += static_cast<char>(c);
  std::fclose(file);
  return text;
}

}  // namespace mkvtest
