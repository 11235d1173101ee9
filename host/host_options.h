#ifndef HOST_HOST_OPTIONS_H_
#define HOST_HOST_OPTIONS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace kvlhost {

// The command line of kvl-play.
struct HostOptions {
  std::string module;  // empty: PluginModule::DefaultPath()
  std::string input;   // a path or a URI
  std::optional<std::string> inspect;
  bool packets = false;
  bool json = false;
  std::optional<std::string> extract;
  std::optional<std::string> plot;
  bool threads = false;
  std::vector<std::string> refuse;
  std::optional<uint32_t> seek;
  bool exact = false;
  std::optional<int> speed;
  std::optional<unsigned int> chapter;
  std::optional<uint32_t> stress;  // seconds
  std::optional<uint64_t> seed;
};

// Declares the options on `app`, to be written into `options` by parsing.
void DefineOptions(CLI::App& app, HostOptions& options);

}  // namespace kvlhost

#endif  // HOST_HOST_OPTIONS_H_
