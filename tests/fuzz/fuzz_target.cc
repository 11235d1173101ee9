// libFuzzer's entry: one input is one Matroska file in memory, played through the whole plug-in
// as an engine drives it: every stream read, sought to times taken from the input and played
// backwards, all closed; and its clusters found both by the parser's Load and by the probe's own
// walk, which must agree. The replay test runs it over every committed input.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "plugin/kvl/media_buffer.h"
#include "tests/support/memory_reader.h"
#include "tests/support/segment_load_check.h"
#include "tests/support/source_harness.h"

namespace {

using mkvtest::ReadChunks;

// The `n`-th 32-bit word from the end, zero-filled in front: a file ends in
// frame bytes, which the fuzzer may change without breaking the layout.
uint32_t WordFromEnd(const uint8_t* data, size_t size, size_t n) {
  uint32_t word = 0;
  for (size_t i = 4 * n; i > 4 * n - 4; --i) word = (word << 8) | (i <= size ? data[size - i] : 0);
  return word;
}

constexpr size_t kChunksPerRun = 500;

void PlayStream(KVL::StreamInterface* stream, uint32_t first, uint32_t second) {
  stream->openStream(nullptr);
  KVL::List<KVL::TypedMediaBuffer*> codecData;
  stream->getCodecData(&codecData);
  for (const auto* node = codecData.head(); node; node = node->next) {
    std::free(node->value->lock());
    node->value->unlock();
    delete node->value;
  }
  ReadChunks(stream, kChunksPerRun);
  // A time within what the first pass read.
  const auto inside = static_cast<uint32_t>(second % (stream->getLastChunkTime() + 1ull));
  unsigned int actual = 0;
  stream->getSyncPoint(1, first, &actual);
  stream->seekStream(first, &actual, true);
  ReadChunks(stream, kChunksPerRun);
  stream->seekStream(inside, &actual, false);
  ReadChunks(stream, kChunksPerRun);
  stream->setReadSpeed(-1000);
  ReadChunks(stream, 2);
  stream->seekStream(inside, &actual, true);
  ReadChunks(stream, 2);
  stream->setReadSpeed(1000);
  stream->setReadMode(KVL::kReadSequential);
  stream->closeStream();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The probe's walk over the cluster heads must find what the parser's Load finds.
  const std::string difference = mkvtest::CompareLoads(data, size).difference;
  if (!difference.empty()) {
    std::fprintf(stderr, "%s\n", difference.c_str());
    std::abort();
  }
  mkvtest::SourceHarness engine(new mkvtest::MemoryReader(data, size));
  if (!engine.Open("/input.mkv", false)) return 0;
  KVL::MKVSource& source = *engine.source;
  source.getTitleName(engine.titleUID);
  const KVL::List<unsigned long long> chapters = source.getChapters(engine.titleUID);
  for (const auto* node = chapters.head(); node; node = node->next) {
    source.getChapterName(node->value);
    source.getChapterStartTime(node->value);
    source.getChapterEndTime(node->value);
    if (!node->next) source.selectChapter(node->value);
  }
  source.playFirstTitle();
  source.getCurrentChapter();
  for (size_t i = 0; i < engine.control.streamCount(); ++i)
    PlayStream(engine.control.stream(i), WordFromEnd(data, size, 1), WordFromEnd(data, size, 2));
  source.closeTitle(false);
  source.close();
  return 0;
}
