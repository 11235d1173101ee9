#include "host/host_options.h"

#include "host/engine_side/version_text.h"

namespace kvlhost {
namespace {

// An option whose value lands in a std::optional, so "not given" is kept
// apart from any value.
template <typename T>
CLI::Option* AddOptional(CLI::App& app, const std::string& name, std::optional<T>& target,
                         const std::string& description) {
  return app.add_option_function<T>(name, [&target](const T& value) { target = value; },
                                    description);
}

}  // namespace

void DefineOptions(CLI::App& app, HostOptions& options) {
  app.description(
      "Plays a Matroska file through the MKVSource plug-in the way the media engine does, "
      "and reports what the plug-in delivered.\n"
      "Exit status: 0 played, 1 not playable, 2 usage error, 3 cannot be opened, "
      "4 module problem, 5 output failure, 6 stress rule broken.");
  CLI::Option* input = app.add_option(
      "FILE", options.input, "a file path, or a URI with a scheme (file:..., http://...)");
  app.add_option("--module", options.module,
                 "the plug-in module (default: MKVSource.so beside kvl-play, else in the "
                 "installed plug-in folder)");
  app.set_version_flag("--version", VersionText(), "print the versions of MKVSource and libwebm");
  CLI::Option* inspect = AddOptional(app, "--inspect", options.inspect,
                                     "print the file size the inspector reports, and exit");
  CLI::Option* packets =
      app.add_flag("--packets", options.packets,
                   "one CSV row per chunk instead of the report: "
                   "stream,kind,track,start,duration,size,md5");
  CLI::Option* json = app.add_flag("--json", options.json, "the report as one JSON document");
  CLI::Option* extract =
      AddOptional(app, "--extract", options.extract,
                  "write each stream's payloads and codec private data into DIR")
          ->check(CLI::Validator(CLI::ExistingDirectory).description(""))
          ->type_name("DIR");
  CLI::Option* plot =
      AddOptional(app, "--plot", options.plot,
                  "also draw what the plug-in delivered as one SVG picture: bit rate, sync "
                  "chunks, ends, chapters and seeks of every stream over time")
          ->type_name("SVG");
  CLI::Option* threads =
      app.add_flag("--threads", options.threads, "read each stream on a thread of its own");
  app.add_option("--refuse", options.refuse,
                 "the engine refuses this video format text (repeatable; \"\" is a format)")
      ->type_name("FORMAT")
      ->allow_extra_args(false);
  CLI::Option* seek =
      AddOptional(app, "--seek", options.seek, "seek every stream to TICKS before reading")
          ->type_name("TICKS");
  CLI::Option* exact = app.add_flag(
      "--exact", options.exact, "seeks (--seek, --chapter) land exactly: audio on the time asked");
  CLI::Option* speed =
      AddOptional(app, "--speed", options.speed, "setReadSpeed(N) on every stream (1000 is normal)")
          ->type_name("N");
  CLI::Option* chapter = AddOptional(app, "--chapter", options.chapter,
                                     "select chapter N (0 to 9) once the title is open")
                             ->type_name("N")
                             ->check(CLI::Range(0u, 9u));
  CLI::Option* stress =
      AddOptional(app, "--stress", options.stress,
                  "engine-style calls from several threads for SECONDS; one summary line")
          ->type_name("SECONDS");
  // The stress run makes its own seeks, speeds and threads and delivers nothing: an option it
  // would ignore is a usage error.
  for (CLI::Option* ignored :
       {packets, json, inspect, extract, plot, threads, seek, exact, speed, chapter})
    stress->excludes(ignored);
  AddOptional(app, "--seed", options.seed, "the seed of --stress (default: a random one)")
      ->type_name("N");
  packets->excludes(json);
  inspect->excludes(input)->excludes(plot);
}

}  // namespace kvlhost
