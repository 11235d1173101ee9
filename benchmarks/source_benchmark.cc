// The costs that grow with a file: the probe, which parses every cluster
// through the reader, reading every frame of every track, the read path
// alone, and what a viewer waits for on a file of many clusters: the first
// chunks, and a seek.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "benchmarks/long_file.h"
#include "mkvparser/mkvparser.h"
#include "plugin/kvl/buffer_allocator.h"
#include "plugin/kvl/media_source.h"
#include "plugin/mkv_source.h"
#include "reader/mkv_reader.h"
#include "tests/support/fake_control.h"
#include "tests/support/memory_reader.h"
#include "tests/support/temp_file.h"

namespace {

const std::string& LongFile() {
  static const std::string path = [] {
    const std::string made = mkvtest::NewTempPath(".mkv");
    mkvbench::WriteLongFile(made, 5);
    return made;
  }();
  return path;
}

std::unique_ptr<KVL::MediaSource> SourceOf(const std::string& path) {
  const std::string uri = "file://" + path;
  return std::make_unique<KVL::MediaSource>(
      KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(uri.c_str())),
      KVL::vorq_string<unsigned char>());
}

// What a reader without a window does: a seek and a read for every peek.
class NaiveReader : public KVL::IMkvReader {
 public:
  ~NaiveReader() override { Close(); }
  int Open(const char* name) override {
    file_ = std::fopen(name, "rb");
    if (!file_) return -1;
    fseeko(file_, 0, SEEK_END);
    length_ = ftello(file_);
    return 0;
  }
  void Close() override {
    if (file_) std::fclose(file_);
    file_ = nullptr;
  }
  int Read(long long position, long length, unsigned char* buffer) override {
    if (!file_ || position < 0 || length < 0) return -1;
    if (length == 0) return 0;
    fseeko(file_, position, SEEK_SET);
    return std::fread(buffer, 1, length, file_) == static_cast<size_t>(length) ? 0 : -1;
  }
  int Length(long long* total, long long* available) override {
    if (!file_) return -1;
    if (total) *total = length_;
    if (available) *available = length_;
    return 0;
  }

 private:
  FILE* file_ = nullptr;
  long long length_ = 0;
};

template <typename Reader>
void BM_Probe(benchmark::State& state) {
  const auto media = SourceOf(LongFile());
  for (auto _ : state) {
    KVL::MKVSource source(nullptr, new Reader);
    benchmark::DoNotOptimize(source.canPlay(*media, nullptr, nullptr, nullptr));
  }
}
BENCHMARK_TEMPLATE(BM_Probe, KVL::MkvReader)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_Probe, NaiveReader)->Unit(benchmark::kMillisecond);

// Keeps the plug-in's progress lines out of the benchmark's report.
class QuietStdout {
 public:
  QuietStdout() : saved_(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    const int null = ::open("/dev/null", O_WRONLY);
    dup2(null, STDOUT_FILENO);
    ::close(null);
  }
  ~QuietStdout() {
    std::fflush(stdout);
    dup2(saved_, STDOUT_FILENO);
    ::close(saved_);
  }

 private:
  int saved_;
};

// Probes and opens `media` in `source` and plays its first title, whose
// streams `control` then holds.
void PlayFirstTitle(KVL::MKVSource& source, mkvtest::FakeControl& control,
                    KVL::MediaSource& media) {
  QuietStdout quiet;
  control.container = &source;
  source.init(&control, 1);
  void* session = nullptr;
  source.canPlay(media, nullptr, &session, nullptr);
  source.open(session);
  source.playFirstTitle();
}

// The first title of `media`, played, its streams held by `control`; the
// title closes when this goes.
struct PlayedTitle {
  explicit PlayedTitle(KVL::MediaSource& media) { PlayFirstTitle(source, control, media); }
  ~PlayedTitle() { source.closeTitle(false); }
  mkvtest::FakeControl control;
  KVL::MKVSource source{nullptr};
};

struct FramesRead {
  int64_t frames = 0;
  int64_t bytes = 0;
};

// Reads every frame of every stream from its start, as an engine would,
// giving each chunk back.
FramesRead ReadEveryStream(const mkvtest::FakeControl& control) {
  FramesRead read;
  for (size_t i = 0; i < control.streamCount(); ++i) {
    KVL::StreamInterface* stream = control.stream(i);
    stream->openStream(nullptr);
    KVL::MediaChunk* chunk = nullptr;
    while (stream->readStream(&chunk) == 0 && chunk) {
      ++read.frames;
      read.bytes += chunk->chunkSize();
      chunk->allocator().freeBuffer(chunk);
    }
    stream->closeStream();
  }
  return read;
}

void BM_ReadEveryFrame(benchmark::State& state) {
  const auto media = SourceOf(LongFile());
  for (auto _ : state) {
    PlayedTitle title(*media);
    const FramesRead read = ReadEveryStream(title.control);
    state.counters["MB"] = static_cast<double>(read.bytes) / 1e6;
  }
}
BENCHMARK(BM_ReadEveryFrame)->Unit(benchmark::kMillisecond);

// The read path alone: readStream and freeBuffer for every frame of a file
// held in memory, whose clusters the parser has walked once before timing,
// so that neither the disk nor the parser's first walk is in the numbers.
// The argument scales the frames' size and shortens the file as much.
void BM_ReadPath(benchmark::State& state) {
  const auto scale = static_cast<int>(state.range(0));
  const mkvtest::Bytes bytes = mkvbench::LongFileBytes(300 / scale, scale);
  const auto media = SourceOf("/memory");
  mkvtest::FakeControl control;
  KVL::MKVSource source(nullptr, new mkvtest::MemoryReader(bytes.data(), bytes.size()));
  PlayFirstTitle(source, control, *media);
  ReadEveryStream(control);
  int64_t frames = 0;
  for (auto _ : state) frames += ReadEveryStream(control).frames;
  state.counters["frames/s"] =
      benchmark::Counter(static_cast<double>(frames), benchmark::Counter::kIsRate);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
  source.closeTitle(false);
}
BENCHMARK(BM_ReadPath)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);

constexpr int kSparseSeconds = 3000;

// 3,000 one-second clusters, audio only in every 1,000th, on disk.
const std::string& SparseFile() {
  static const std::string path =
      mkvtest::WriteTemp(mkvbench::SparseFileBytes(kSparseSeconds, 1000));
  return path;
}

KVL::StreamInterface* StreamOfType(const mkvtest::FakeControl& control, unsigned int type) {
  for (size_t i = 0; i < control.streamCount(); ++i) {
    if (control.stream(i)->streamType() == type) return control.stream(i);
  }
  return nullptr;
}

void ReadOneChunk(KVL::StreamInterface* stream) {
  KVL::MediaChunk* chunk = nullptr;
  if (stream->readStream(&chunk) == 0 && chunk) chunk->allocator().freeBuffer(chunk);
}

// Opens every stream that `control` holds and reads a chunk of each.
void ReadFirstChunks(const mkvtest::FakeControl& control) {
  for (size_t i = 0; i < control.streamCount(); ++i) {
    control.stream(i)->openStream(nullptr);
    ReadOneChunk(control.stream(i));
  }
}

// The probe, the open, the title and one chunk of each stream of the
// sparse file.
void BM_OpenFirstChunk(benchmark::State& state) {
  const auto media = SourceOf(SparseFile());
  for (auto _ : state) {
    PlayedTitle title(*media);
    QuietStdout quiet;
    ReadFirstChunks(title.control);
  }
}
BENCHMARK(BM_OpenFirstChunk)->Unit(benchmark::kMillisecond);

// Times `seek`, given the streams of the sparse file, each open and read
// from once, on a title opened afresh untimed, so that no cluster the
// last seek parsed is still at hand.
template <typename Seek>
void TimeSeeks(benchmark::State& state, Seek seek) {
  const auto media = SourceOf(SparseFile());
  for (auto _ : state) {
    state.PauseTiming();
    auto title = std::make_unique<PlayedTitle>(*media);
    QuietStdout quiet;
    ReadFirstChunks(title->control);
    state.ResumeTiming();
    seek(title->control);
    state.PauseTiming();
    title.reset();
    state.ResumeTiming();
  }
}

// Both streams to 10 s before the end, and a chunk of each.
void BM_SeekNearEnd(benchmark::State& state) {
  TimeSeeks(state, [](const mkvtest::FakeControl& control) {
    for (size_t i = 0; i < control.streamCount(); ++i) {
      control.stream(i)->seekStream((kSparseSeconds - 10) * 1000, nullptr, false);
      ReadOneChunk(control.stream(i));
    }
  });
}
BENCHMARK(BM_SeekNearEnd)->Unit(benchmark::kMillisecond);

// The audio alone to halfway between two of its blocks, 500 clusters past
// the last, and its chunk.
void BM_SeekSparseTrack(benchmark::State& state) {
  TimeSeeks(state, [](const mkvtest::FakeControl& control) {
    KVL::StreamInterface* audio = StreamOfType(control, KVL::kStreamAudio);
    audio->seekStream(2500 * 1000, nullptr, false);
    ReadOneChunk(audio);
  });
}
BENCHMARK(BM_SeekSparseTrack)->Unit(benchmark::kMillisecond);

// The same seek over and over on one title, as an engine that scrubs makes
// it: the clusters a seek looked through in vain needn't be parsed again.
void BM_SeekSparseTrackAgain(benchmark::State& state) {
  const auto media = SourceOf(SparseFile());
  PlayedTitle title(*media);
  QuietStdout quiet;
  ReadFirstChunks(title.control);
  KVL::StreamInterface* audio = StreamOfType(title.control, KVL::kStreamAudio);
  for (auto _ : state) {
    audio->seekStream(2500 * 1000, nullptr, false);
    ReadOneChunk(audio);
  }
}
BENCHMARK(BM_SeekSparseTrackAgain)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
