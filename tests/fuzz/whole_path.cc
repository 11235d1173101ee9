#include "tests/fuzz/whole_path.h"

#include <cstdlib>

#include "plugin/kvl/media_buffer.h"
#include "tests/support/memory_reader.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

constexpr size_t kChunksPerRun = 500;

// The `n`-th 32-bit word from the end, zero-filled in front: a file ends in
// frame bytes, which the fuzzer may change without breaking the layout.
uint32_t WordFromEnd(const uint8_t* data, size_t size, size_t n) {
  uint32_t word = 0;
  for (size_t i = 4 * n; i > 4 * n - 4; --i) word = (word << 8) | (i <= size ? data[size - i] : 0);
  return word;
}

size_t PlayStream(KVL::StreamInterface* stream, uint32_t first, uint32_t second) {
  stream->openStream(nullptr);
  KVL::List<KVL::TypedMediaBuffer*> codecData;
  stream->getCodecData(&codecData);
  for (const auto* node = codecData.head(); node; node = node->next) {
    std::free(node->value->lock());
    node->value->unlock();
    delete node->value;
  }
  size_t chunks = ReadChunks(stream, kChunksPerRun).size();
  // A time within what the first pass read.
  const auto inside = static_cast<uint32_t>(second % (stream->getLastChunkTime() + 1ull));
  unsigned int actual = 0;
  stream->getSyncPoint(1, first, &actual);
  stream->seekStream(first, &actual, true);
  chunks += ReadChunks(stream, kChunksPerRun).size();
  stream->seekStream(inside, &actual, false);
  chunks += ReadChunks(stream, kChunksPerRun).size();
  stream->setReadSpeed(-1000);
  chunks += ReadChunks(stream, 2).size();
  stream->seekStream(inside, &actual, true);
  chunks += ReadChunks(stream, 2).size();
  stream->setReadSpeed(1000);
  stream->setReadMode(KVL::kReadSequential);
  stream->closeStream();
  return chunks;
}

}  // namespace

size_t PlayWholePath(const uint8_t* data, size_t size) {
  SourceHarness engine(new MemoryReader(data, size));
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
  size_t chunks = 0;
  for (size_t i = 0; i < engine.control.streamCount(); ++i)
    chunks += PlayStream(engine.control.stream(i), WordFromEnd(data, size, 1),
                         WordFromEnd(data, size, 2));
  source.closeTitle(false);
  source.close();
  return chunks;
}

}  // namespace mkvtest
