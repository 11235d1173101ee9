#include "host/run_host.h"

#include <memory>
#include <optional>
#include <random>

#include "host/engine_side/host_control.h"
#include "host/engine_side/host_error.h"
#include "host/engine_side/loaded_engine.h"
#include "host/engine_side/plugin_module.h"
#include "host/host_options.h"
#include "host/play/chunk_sink.h"
#include "host/play/play_faults.h"
#include "host/play/play_report.h"
#include "host/play/player.h"
#include "host/play/source_file.h"
#include "host/play/source_uri.h"
#include "host/plot/delivery_plot.h"
#include "host/plot/delivery_timeline.h"
#include "host/plot/pending_file.h"
#include "host/report/packet_table.h"
#include "host/report/payload_extractor.h"
#include "host/report/report_json.h"
#include "host/report/report_text.h"
#include "host/stress/stress_run.h"

namespace kvlhost {
namespace {

constexpr char kProgramName[] = "kvl-play";

void Describe(PluginModule& module, PlayReport& report) {
  report.module = module.path();
  report.interfaces = {PluginModule::kContainerInterface, PluginModule::kInspectorInterface,
                       "media (by the object's type)"};
  for (const auto& type : module.container().supportedMimeTypes()) {
    const auto* text = type.first.data();
    report.mimeTypes.emplace_back(text ? reinterpret_cast<const char*>(text) : "");
  }
}

void WriteReport(const HostOptions& options, const PlayReport& report, std::ostream& out) {
  if (options.packets) return;
  if (options.json) {
    out << ReportJson(report).dump(2, ' ', false, nlohmann::json::error_handler_t::replace)
        << '\n';
    return;
  }
  WriteTextReport(report, out);
}

std::string RefusalText(const PlayReport& report) {
  std::string text;
  for (const RefusedFormat& format : report.refused)
    text += " (refused " + format.kind + " format \"" + format.format + "\")";
  return text;
}

int Inspect(const HostOptions& options, const HostStreams& streams) {
  const std::string uri = SourceUri(*options.inspect);
  SourceFile::Look(uri);
  LoadedEngine engine(options.module, options.refuse);
  KVL::FileInspectorInterface& inspector = engine.module().inspector();
  const unsigned int opened = inspector.openFile(
      KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(uri.c_str())));
  if (opened != 0) throw HostError(kNotOpened, "cannot inspect: " + uri);
  unsigned long long size = 0;
  inspector.getSize(size);
  inspector.closeFile();
  if (options.json)
    streams.report << nlohmann::json{{"source", uri}, {"size", size}}.dump(
                          2, ' ', false, nlohmann::json::error_handler_t::replace)
                   << '\n';
  else
    streams.report << "size: " << size << '\n';
  return kPlayed;
}

std::unique_ptr<ChunkSink> MakeSink(const HostOptions& options, std::ostream& out) {
  if (options.packets) return std::make_unique<PacketTable>(out);
  if (options.extract) return std::make_unique<PayloadExtractor>(*options.extract);
  return std::make_unique<NullSink>();
}

// The one-line message of a medium that can't be played or opened.
void ReportFailure(ExitStatus status, const PlayReport& report, std::ostream& errors) {
  if (status == kNotPlayable)
    errors << kProgramName << ": not playable: " << report.uri << RefusalText(report) << '\n';
  else if (status == kNotOpened)
    errors << kProgramName << ": cannot open: " << report.uri << '\n';
}

// Each fault of a play on a line of its own; the gravest decides the status.
int ReportFaults(const PlayReport& report, ExitStatus status, std::ostream& errors) {
  const std::vector<HostError> faults = PlayFaults(report);
  for (const HostError& fault : faults) errors << kProgramName << ": " << fault.what() << '\n';
  return faults.empty() ? status : faults.front().status();
}

int Play(const HostOptions& options, const HostStreams& streams) {
  const std::string uri = SourceUri(options.input);
  const std::optional<SourceFile> file = SourceFile::Look(uri);
  // A picture that can't be written fails before the play.
  std::optional<PendingFile> picture;
  if (options.plot) picture.emplace(*options.plot);
  LoadedEngine engine(options.module, options.refuse);
  PlayReport report;
  Describe(engine.module(), report);
  PlayRequest request;
  request.uri = uri;
  request.seek = options.seek;
  request.exact = options.exact;
  request.speed = options.speed;
  request.chapter = options.chapter;
  request.threads = options.threads;
  request.progress = streams.progress;

  const std::unique_ptr<ChunkSink> sink = MakeSink(options, streams.report);
  DeliveryTimeline timeline(kPlotColumns);
  SinkPair sinkAndTimeline(*sink, timeline);
  ExitStatus status;
  {
    Player player(engine.module(), engine.control(),
                  picture ? sinkAndTimeline : static_cast<ChunkSink&>(*sink));
    status = player.Play(request, report);
  }
  if (file) report.fileChange = file->Change();
  report.engine = engine.control().record();
  WriteReport(options, report, streams.report);
  ReportFailure(status, report, streams.errors);
  if (picture && status == kPlayed) {
    timeline.Finish();
    DrawDelivery(report, timeline, *picture);
    picture->Commit();
  }
  return ReportFaults(report, status, streams.errors);
}

int Stress(const HostOptions& options, const HostStreams& streams) {
  StressPlan plan;
  plan.uri = SourceUri(options.input);
  SourceFile::Look(plan.uri);
  LoadedEngine engine(options.module, options.refuse);
  plan.seed = options.seed ? *options.seed : std::random_device()();
  plan.seconds = *options.stress;
  PlayReport report;
  StressSummary summary;
  const ExitStatus status = RunStress(engine.module(), engine.control(), plan, report, summary);
  if (status == kPlayed || status == kStressRuleBroken)
    streams.report << SummaryLine(plan, summary) << '\n';
  ReportFailure(status, report, streams.errors);
  return status;
}

}  // namespace

int RunHost(int argc, const char* const* argv, const HostStreams& streams) {
  CLI::App app(kProgramName, kProgramName);
  HostOptions options;
  DefineOptions(app, options);
  try {
    app.parse(argc, argv);
    if (options.input.empty() && !options.inspect) throw CLI::RequiredError("FILE");
  } catch (const CLI::ParseError& error) {
    return app.exit(error, streams.report, streams.errors) == 0 ? kPlayed : kUsage;
  }

  try {
    if (options.inspect) return Inspect(options, streams);
    return options.stress ? Stress(options, streams) : Play(options, streams);
  } catch (const HostError& error) {
    streams.errors << kProgramName << ": " << error.what() << '\n';
    return error.status();
  } catch (const std::exception& error) {
    streams.errors << kProgramName << ": " << error.what() << '\n';
    return kHostFailure;
  }
}

}  // namespace kvlhost
