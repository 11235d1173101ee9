// A source that has probed, opened and published a file through the fake
// engine, and opened its title unless told not to; and reading helpers.
#ifndef MKVSOURCE_TESTS_STREAMS_OPENED_TITLE_H_
#define MKVSOURCE_TESTS_STREAMS_OPENED_TITLE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "plugin/kvl/media_source.h"
#include "plugin/kvl/stream_interface.h"
#include "plugin/mkv_source.h"
#include "tests/streams/fake_control.h"
#include "tests/support/mkv_writer.h"

namespace mkvtest {

struct OpenedTitle {
  explicit OpenedTitle(const std::string& path, bool openTitle = true);

  // The i-th stream that openTitle() added (video readers first, then the
  // audio reader), after openStream().
  KVL::StreamInterface* opened(size_t i);
  bool ok() const { return playable && openResult == 0 && titleUID != 0; }

  KVL::MediaSource media;
  // Declared before the engine so that the engine's streams die first: they
  // lock the source's title record on the way out.
  std::unique_ptr<KVL::MKVSource> source;
  FakeControl control;
  bool playable = false;
  int openResult = -1;
  unsigned long long titleUID = 0;
};

// One chunk's content; the chunk itself went back to its allocator.
struct Chunk {
  uint32_t start = 0;
  uint32_t duration = 0;
  std::string bytes;
};

// Video track 1 (H.264, 64x48) and audio track 2 (AAC), unless `tracks`
// says otherwise, over `clusters`, written to a temporary file.
std::string WriteAv(std::vector<Cluster> clusters, std::vector<Track> tracks = {});

// Reads up to `limit` chunks, stopping at the first call without one; the
// result of that last call goes to `*last` if given.
std::vector<Chunk> ReadChunks(KVL::StreamInterface* stream, size_t limit = SIZE_MAX,
                              int* last = nullptr);

// One line "start+duration md5" per chunk, for comparing lists.
std::string Describe(const std::vector<Chunk>& chunks);

// Standard output of `run`.
template <typename Run>
std::string StdoutOf(Run run);

}  // namespace mkvtest

#include <gtest/gtest.h>

template <typename Run>
std::string mkvtest::StdoutOf(Run run) {
  testing::internal::CaptureStdout();
  run();
  return testing::internal::GetCapturedStdout();
}

#endif  // MKVSOURCE_TESTS_STREAMS_OPENED_TITLE_H_
