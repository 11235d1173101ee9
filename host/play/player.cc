#include "host/play/player.h"

#include "host/play/avc_facts.h"
#include "host/play/chunk_pump.h"
#include "host/play/play_hook.h"
#include "host/play/progress_line.h"
#include "host/play/stream_facts.h"

namespace kvlhost {
namespace {

constexpr char kMatroskaMimeType[] = "video/x-matroska";

KVL::vorq_string<unsigned char> Utf8(const std::string& text) {
  return KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(text.c_str()));
}

// Only a play from the start has to reach every stream's first frame: a seek
// or a chapter may well land past a stream's last block.
void MarkSilentStreams(PlayReport& report) {
  const bool titleLasts = !report.chapters.empty() && report.chapters.back().engineEnd > 0;
  for (StreamReport& stream : report.streams)
    stream.deliveredNothing = titleLasts && stream.chunks == 0;
}

}  // namespace

TitleTimeScale ReportedTimeScale(const PlayReport& report) {
  const uint32_t engineLength = report.chapters.empty() ? 0 : report.chapters.back().engineEnd;
  const uint32_t tickLength = report.streams.empty() ? 0 : report.streams.front().duration;
  return TitleTimeScale(engineLength, tickLength);
}

Player::Player(PluginModule& module, HostControl& control, ChunkSink& sink)
    : module_(module), control_(control), sink_(sink) {}

Player::~Player() { Close(); }

void Player::Close() {
  KVL::ContainerInterface& container = module_.container();
  for (KVL::StreamInterface* stream : streams_) stream->closeStream();
  streams_.clear();
  if (titleOpen_) container.closeTitle(false);
  titleOpen_ = false;
  // Streams the plug-in didn't give up must not outlive it.
  control_.dropStreams();
  if (opened_) container.close();
  opened_ = false;
  if (session_) container.closeSavedSession(session_);
  session_ = nullptr;
}

ExitStatus Player::Play(const PlayRequest& request, PlayReport& report) {
  const ExitStatus opened = Open(request.uri, report);
  if (opened != kPlayed) return opened;
  const TitleTimeScale scale = ReportedTimeScale(report);
  ApplyRequest(request, scale, report);
  RunPlayHook("reading");
  Read(request, scale, report);
  if (!request.seek && !request.chapter) MarkSilentStreams(report);
  return kPlayed;
}

ExitStatus Player::Open(const std::string& uri, PlayReport& report) {
  report.uri = uri;
  source_ = std::make_unique<KVL::MediaSource>(Utf8(uri), Utf8(kMatroskaMimeType));
  if (!Probe(report)) return kNotPlayable;
  RunPlayHook("probed");

  // open() takes the session over, and close() is due even if it fails.
  void* session = session_;
  session_ = nullptr;
  opened_ = true;
  report.openResult = module_.container().open(session);
  if (*report.openResult != 0) return kNotOpened;

  ListTitle(report);
  // The engine's way in: the plug-in asks for the title to be opened and
  // the control object opens it, adding the streams as it goes.
  module_.media().playFirstTitle();
  titleOpen_ = true;
  streams_ = control_.streams();
  OpenStreams(report);
  return kPlayed;
}

bool Player::Probe(PlayReport& report) {
  std::vector<KVL::FormatDescriptor> refused;
  report.playable = module_.container().canPlay(*source_, nullptr, &session_, &refused);
  for (const KVL::FormatDescriptor& format : refused)
    report.refused.push_back({MediaKind(format.mediaType), FormatText(format), format.reason});
  if (!report.playable && session_) {
    module_.container().closeSavedSession(session_);
    session_ = nullptr;
  }
  return report.playable;
}

void Player::ListTitle(PlayReport& report) {
  const KVL::List<unsigned long long> titles = module_.container().getTitles();
  for (auto* node = titles.head(); node; node = node->next) report.titles.push_back(node->value);
  if (report.titles.empty()) return;
  KVL::MediaInterface& media = module_.media();
  const KVL::List<unsigned long long> chapters = media.getChapters(report.titles.front());
  for (auto* node = chapters.head(); node; node = node->next) {
    report.chapters.push_back({node->value, media.getChapterStartTime(node->value),
                               media.getChapterEndTime(node->value)});
  }
}

void Player::OpenStreams(PlayReport& report) {
  unsigned int videoOrdinal = 0;
  for (size_t i = 0; i < streams_.size(); ++i) {
    KVL::StreamInterface& stream = *streams_[i];
    stream.openStream(nullptr);
    StreamReport facts = DescribeStream(stream, i, videoOrdinal);
    if (facts.kind == "video") ++videoOrdinal;
    const std::vector<uint8_t> codecData = TakeCodecData(stream);
    facts.codecPrivateSize = codecData.size();
    if (facts.format == "H264") facts.avc = ReadAvcFacts(codecData);
    report.streams.push_back(facts);
    sink_.onCodecData(report.streams.back(), codecData);
  }
}

void Player::ApplyRequest(const PlayRequest& request, const TitleTimeScale& scale,
                          PlayReport& report) {
  if (request.speed) {
    for (KVL::StreamInterface* stream : streams_) stream->setReadSpeed(*request.speed);
  }
  if (request.seek) {
    SeekAll(*request.seek, request.exact, report);
    control_.setPosition(static_cast<int32_t>(scale.ToEngineTime(*request.seek)));
  }
  if (request.chapter) SelectChapter(*request.chapter, request.exact, scale, report);
}

// The plug-in answers a chapter selection with seekToTime(); the engine
// then seeks every stream there.
void Player::SelectChapter(unsigned int index, bool exact, const TitleTimeScale& scale,
                           PlayReport& report) {
  if (index >= report.chapters.size())
    throw HostError(kUsage, "the title has no chapter " + std::to_string(index));
  report.selectedChapter = index;
  module_.media().selectChapter(report.chapters[index].uid);
  const std::optional<uint32_t> time = control_.takeSeekRequest();
  if (!time) return;
  SeekAll(scale.ToTicks(*time), exact, report);
  control_.setPosition(static_cast<int32_t>(*time));
  report.currentChapter = module_.media().getCurrentChapter();
}

void Player::SeekAll(uint32_t ticks, bool exact, PlayReport& report) {
  for (size_t i = 0; i < streams_.size(); ++i) {
    SeekOutcome outcome;
    outcome.requested = ticks;
    outcome.result = streams_[i]->seekStream(ticks, &outcome.actual, exact);
    report.streams[i].seeks.push_back(outcome);
  }
}

void Player::Read(const PlayRequest& request, const TitleTimeScale& scale, PlayReport& report) {
  const uint32_t tickLength = streams_.empty() ? 0 : streams_.front()->duration();
  ProgressLine progress(request.progress, scale.ToEngineTime(tickLength), tickLength);
  ChunkPump pump(streams_, report.streams, sink_, control_, scale, progress);
  if (request.threads)
    pump.ReadOnThreads();
  else
    pump.ReadInterleaved();
}

}  // namespace kvlhost
