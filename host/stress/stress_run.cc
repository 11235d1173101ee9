#include "host/stress/stress_run.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <thread>

#include "host/engine_side/held_chunk.h"
#include "host/play/chunk_sink.h"
#include "host/play/player.h"
#include "host/play/stream_facts.h"
#include "host/stress/stress_rules.h"

namespace kvlhost {
namespace {

using Clock = std::chrono::steady_clock;

// The most reads the control thread lets pass between two of its calls.
constexpr uint64_t kMostReadsBetweenCalls = 64;
constexpr int kSpeeds[] = {-1000, 500, KVL::kReadSpeedNormal, 2000};

// One stream as the engine holds it. `calls` makes the calls on the stream
// one at a time, as the engine does; `generation` counts the control
// thread's changes, so that a reader at its end knows when to try again.
struct StressStream {
  StressStream(size_t index, unsigned long long uid, std::vector<FrameKey> reference,
               uint32_t span, BrokenRules& broken)
      : uid(uid), span(span), rules(index, std::move(reference), broken) {}

  const unsigned long long uid;
  const uint32_t span;  // seeks go up to here, in ticks: a little past the end
  std::mutex calls;
  StreamRules rules;        // under `calls`
  uint64_t generation = 0;  // written under `calls` and the run's mutex
  bool parked = false;      // under the run's mutex
};

enum class ReadEnd { kChunk, kPark, kGone };

class StressRun {
 public:
  StressRun(PluginModule& module, HostControl& control, const StressPlan& plan)
      : module_(module),
        control_(control),
        player_(module, control, sink_),
        plan_(plan),
        random_(plan.seed),
        deadline_(Clock::now() + std::chrono::seconds(plan.seconds)) {}

  ExitStatus Run(PlayReport& report, StressSummary& summary);

 private:
  void Prepare();
  std::vector<FrameKey> ReadReference(KVL::StreamInterface& stream);
  void Read(StressStream& stream);
  ReadEnd ReadOnce(StressStream& stream, uint64_t& generation);
  void Control(const PlayReport& report);
  void CallAtRandom(const PlayReport& report);
  void Seek(StressStream& stream, uint32_t time, bool exact);
  void ChangeSpeed(StressStream& stream);
  void AskSyncPoint(StressStream& stream);
  void AskChapters(const PlayReport& report);
  void OnStream(StressStream& stream, bool changes,
                const std::function<void(KVL::StreamInterface&)>& call);
  void AwaitReads(uint64_t count);
  void Stop();
  void CheckShutdown(long chunksBefore);
  uint64_t Random(uint64_t below) { return below ? random_() % below : 0; }

  PluginModule& module_;
  HostControl& control_;
  NullSink sink_;
  Player player_;
  const StressPlan& plan_;
  std::mt19937_64 random_;
  const Clock::time_point deadline_;
  TitleTimeScale scale_{0, 0};
  BrokenRules broken_;
  std::vector<std::unique_ptr<StressStream>> streams_;
  std::vector<std::thread> readers_;
  std::atomic<uint64_t> calls_{0};
  std::atomic<uint64_t> reads_{0};
  std::atomic<uint64_t> seeks_{0};

  // Guards what follows, and each stream's `parked`.
  std::mutex mutex_;
  std::condition_variable changed_;
  std::atomic<bool> stopping_{false};
  uint64_t chunks_ = 0;
  uint64_t chunkTarget_ = 0;
  size_t parked_ = 0;
};

ExitStatus StressRun::Run(PlayReport& report, StressSummary& summary) {
  const long chunksBefore = KVL::MediaChunk::live();
  PluginLineTap tap;
  const ExitStatus opened = player_.Open(plan_.uri, report);
  if (opened != kPlayed) return opened;
  scale_ = ReportedTimeScale(report);
  Prepare();
  try {
    for (auto& stream : streams_) {
      StressStream* reading = stream.get();
      readers_.emplace_back([this, reading] { Read(*reading); });
    }
    Control(report);
  } catch (...) {
    Stop();
    throw;
  }
  Stop();
  CheckShutdown(chunksBefore);
  summary = {calls_, reads_, seeks_, tap.Stop(), broken_.count(), broken_.first()};
  return broken_.count() ? kStressRuleBroken : kPlayed;
}

// The reference read, then the open that starts the streams over.
void StressRun::Prepare() {
  const std::vector<KVL::StreamInterface*>& streams = player_.streams();
  for (size_t i = 0; i < streams.size(); ++i) {
    KVL::StreamInterface& stream = *streams[i];
    std::vector<FrameKey> reference = ReadReference(stream);
    const uint32_t last = reference.empty() ? 0 : reference.back().start;
    const uint32_t length = std::max(stream.duration(), last);
    stream.openStream(nullptr);
    TakeCodecData(stream);
    calls_ += 2;
    streams_.push_back(std::make_unique<StressStream>(i, stream.streamUID(), std::move(reference),
                                                      length + length / 8 + 1, broken_));
  }
}

std::vector<FrameKey> StressRun::ReadReference(KVL::StreamInterface& stream) {
  std::vector<FrameKey> frames;
  for (;;) {
    KVL::MediaChunk* read = nullptr;
    const int result = stream.readStream(&read);
    const HeldChunk chunk(read);
    ++calls_;
    ++reads_;
    if (result != 0 || !chunk) return frames;
    frames.push_back(KeyOf(*chunk));
  }
}

void StressRun::Read(StressStream& stream) {
  try {
    for (;;) {
      uint64_t generation = 0;
      const ReadEnd end = ReadOnce(stream, generation);
      std::unique_lock<std::mutex> lock(mutex_);
      if (end == ReadEnd::kGone) return;
      if (end == ReadEnd::kChunk) {
        if (++chunks_ == chunkTarget_) changed_.notify_all();
        continue;
      }
      if (stream.generation != generation) continue;
      stream.parked = true;
      ++parked_;
      changed_.notify_all();
      changed_.wait(lock, [&] { return !stream.parked || stopping_; });
      if (stopping_) return;
    }
  } catch (const std::exception& error) {
    broken_.Add(std::string("a reader failed: ") + error.what());
  }
}

// The lease keeps the stream alive through the call, even when the title
// closes meanwhile; the chunk goes back before the lease ends.
ReadEnd StressRun::ReadOnce(StressStream& stressed, uint64_t& generation) {
  const std::shared_ptr<KVL::StreamInterface> stream = control_.lease(stressed.uid);
  if (!stream) return ReadEnd::kGone;
  std::lock_guard<std::mutex> calls(stressed.calls);
  generation = stressed.generation;
  const bool sequential = stream->readMode() == KVL::kReadSequential;
  KVL::MediaChunk* read = nullptr;
  const int result = stream->readStream(&read);
  const HeldChunk chunk(read);
  ++calls_;
  ++reads_;
  if (result == 0 && chunk) {
    stressed.rules.OnChunk(KeyOf(*chunk), sequential);
    return ReadEnd::kChunk;
  }
  if (result == 0 && stream->isEOS())
    stressed.rules.OnEnd(stopping_);
  else if (result != KVL::kReadNothingUntilSeek || sequential)
    stressed.rules.OnAnswer("readStream", result);
  return ReadEnd::kPark;
}

// Ends with a seek of every stream to its start and a few chunks, so that
// the close meets busy readers.
void StressRun::Control(const PlayReport& report) {
  for (uint64_t made = 0; made < plan_.controlCalls && Clock::now() < deadline_; ++made) {
    CallAtRandom(report);
    AwaitReads(Random(kMostReadsBetweenCalls + 1));
  }
  for (auto& stream : streams_) Seek(*stream, 0, true);
  AwaitReads(1 + Random(kMostReadsBetweenCalls));
}

void StressRun::CallAtRandom(const PlayReport& report) {
  if (streams_.empty()) return AskChapters(report);
  StressStream& stream = *streams_[Random(streams_.size())];
  switch (Random(4)) {
    case 0: return Seek(stream, static_cast<uint32_t>(Random(stream.span)), Random(2));
    case 1: return ChangeSpeed(stream);
    case 2: return AskSyncPoint(stream);
    default: return AskChapters(report);
  }
}

void StressRun::Seek(StressStream& stream, uint32_t time, bool exact) {
  OnStream(stream, true, [&](KVL::StreamInterface& seeking) {
    unsigned int actual = 0;
    const int result = seeking.seekStream(time, &actual, exact);
    ++seeks_;
    stream.rules.OnSeek(result == 0);
  });
  control_.setPosition(static_cast<int32_t>(scale_.ToEngineTime(time)));
}

// Back from a negative speed takes read mode 1 as well.
void StressRun::ChangeSpeed(StressStream& stream) {
  const int speed = kSpeeds[Random(std::size(kSpeeds))];
  OnStream(stream, true, [&](KVL::StreamInterface& changing) {
    changing.setReadSpeed(speed);
    if (speed < 0) return;
    ++calls_;
    if (changing.setReadMode(KVL::kReadSequential)) return;
    stream.rules.OnAnswer("setReadMode(1) after a positive speed", 0);
  });
}

void StressRun::AskSyncPoint(StressStream& stream) {
  const uint32_t time = static_cast<uint32_t>(Random(stream.span));
  const int direction = Random(2) ? 1 : -1;
  OnStream(stream, false, [&](KVL::StreamInterface& asked) {
    unsigned int point = 0;
    const int result = asked.getSyncPoint(direction, time, &point);
    if (result != 0) stream.rules.OnAnswer("getSyncPoint", result);
  });
}

// Chapter queries take no lock in the plug-in and may meet any read; a
// selection has the engine seek every stream to the chapter.
void StressRun::AskChapters(const PlayReport& report) {
  KVL::MediaInterface& media = module_.media();
  media.getCurrentChapter();
  ++calls_;
  if (report.chapters.empty()) return;
  const ChapterReport& chapter = report.chapters[Random(report.chapters.size())];
  media.getChapterStartTime(chapter.uid);
  media.getChapterEndTime(chapter.uid);
  media.getChapters(report.titles.front());
  calls_ += 3;
  if (Random(4) != 0) return;
  media.selectChapter(chapter.uid);
  ++calls_;
  const std::optional<uint32_t> time = control_.takeSeekRequest();
  if (!time) return;
  const uint32_t ticks = scale_.ToTicks(*time);
  const bool exact = Random(2);
  for (auto& stream : streams_) Seek(*stream, ticks, exact);
}

// One call on a stream while no other call is on it, unless the stream is
// gone; a change wakes its reader.
void StressRun::OnStream(StressStream& stream, bool changes,
                         const std::function<void(KVL::StreamInterface&)>& call) {
  const std::shared_ptr<KVL::StreamInterface> leased = control_.lease(stream.uid);
  if (!leased) return;
  std::lock_guard<std::mutex> calls(stream.calls);
  call(*leased);
  ++calls_;
  if (!changes) return;
  std::lock_guard<std::mutex> lock(mutex_);
  ++stream.generation;
  if (stream.parked) --parked_;
  stream.parked = false;
  changed_.notify_all();
}

// Lets the readers go on for a while: until they have delivered `count`
// chunks, all wait for a change, or time is up. No sleep: only what the
// readers report moves the control thread on.
void StressRun::AwaitReads(uint64_t count) {
  std::unique_lock<std::mutex> lock(mutex_);
  chunkTarget_ = chunks_ + count;
  changed_.wait_until(lock, deadline_, [&] {
    return chunks_ >= chunkTarget_ || parked_ == streams_.size();
  });
}

// The readers are told to stop, and while they do the engine closes the
// streams, the title and the file.
void StressRun::Stop() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  player_.Close();
  for (std::thread& reader : readers_) reader.join();
  readers_.clear();
}

void StressRun::CheckShutdown(long chunksBefore) {
  const ControlRecord record = control_.record();
  for (unsigned long long uid : record.added) {
    if (std::find(record.removed.begin(), record.removed.end(), uid) == record.removed.end())
      broken_.Add("closeTitle kept stream " + std::to_string(uid));
  }
  if (record.titlesClosed.empty()) broken_.Add("closeTitle reported no title closed");
  const long lost = KVL::MediaChunk::live() - chunksBefore;
  if (lost != 0) broken_.Add(std::to_string(lost) + " chunks not given back");
}

}  // namespace

std::string SummaryLine(const StressPlan& plan, const StressSummary& summary) {
  std::string line = "stress: seed " + std::to_string(plan.seed) + ": " +
                     std::to_string(summary.calls) + " calls (" +
                     std::to_string(summary.reads) + " reads, " +
                     std::to_string(summary.seeks) + " seeks); " + CountsText(summary.lines) +
                     "; ";
  if (summary.brokenCount == 0) return line + "no rule broken";
  return line + std::to_string(summary.brokenCount) + " broken rules, the first: " +
         summary.broken.front();
}

ExitStatus RunStress(PluginModule& module, HostControl& control, const StressPlan& plan,
                     PlayReport& report, StressSummary& summary) {
  StressRun run(module, control, plan);
  return run.Run(report, summary);
}

}  // namespace kvlhost
