// A source under test with the engine around it, and helpers to read its streams.
#ifndef MKVSOURCE_TESTS_SUPPORT_SOURCE_HARNESS_H_
#define MKVSOURCE_TESTS_SUPPORT_SOURCE_HARNESS_H_

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "plugin/kvl/media_source.h"
#include "plugin/kvl/plugin_context.h"
#include "plugin/mkv_source.h"
#include "tests/support/fake_control.h"
#include "tests/support/mkv_writer.h"

namespace mkvtest {

std::unique_ptr<KVL::MediaSource> SourceOf(const std::string& uri);
std::string Text(const KVL::vorq_string<unsigned char>& text);
inline std::string FileUri(const std::string& path) { return "file://" + path; }

struct SourceHarness {
  // With `reader`, the source reads through it (and owns it), not a file.
  explicit SourceHarness(KVL::IMkvReader* reader = nullptr);
  ~SourceHarness();  // closes a session nobody opened

  // canPlay() of `path`, with the session to `session`.
  bool Probe(const std::string& path);
  // Probes and opens `path` and its title (unless told not to), forgetting the
  // engine's calls so far. False if a step fails.
  bool Open(const std::string& path, bool openTitle = true);
  // The i-th stream the engine holds (video readers first), after openStream().
  KVL::StreamInterface* opened(size_t i);

  KVL::PluginContext context;
  std::unique_ptr<KVL::MediaSource> media;
  std::unique_ptr<KVL::MKVSource> source;
  // After the source, so that its streams go first: they lock the source's
  // title record on the way out.
  FakeControl control;
  void* session = nullptr;
  std::vector<KVL::FormatDescriptor> refused;
  unsigned long long titleUID = 0;
};

class SourceTest : public testing::Test, public SourceHarness {};

// A harness that has opened `path`, and its title unless told not to.
struct OpenedTitle : SourceHarness {
  explicit OpenedTitle(const std::string& path, bool openTitle = true)
      : ok(Open(path, openTitle)) {}
  const bool ok;
};

// `clusters` of video track 1 and audio track 2 unless `tracks` says otherwise.
std::string WriteAv(std::vector<Cluster> clusters, std::vector<Track> tracks = {});

// One chunk's content; the chunk itself went back to its allocator.
struct Chunk {
  uint32_t start = 0;
  uint32_t duration = 0;
  std::string bytes;
  bool operator==(const Chunk& o) const {
    return start == o.start && duration == o.duration && bytes == o.bytes;
  }
};

// Reads up to `limit` chunks, up to the first call without one, whose result goes to `*last`.
std::vector<Chunk> ReadChunks(KVL::StreamInterface* stream, size_t limit = SIZE_MAX,
                              int* last = nullptr);

// What `run` writes to the file descriptor `fd`: 1 the plug-in's lines, 2 the engine's log.
std::string OutputOf(int fd, const std::function<void()>& run);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_SOURCE_HARNESS_H_
