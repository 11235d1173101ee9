#include "host/engine_side/version_text.h"

#include <dlfcn.h>

#include <filesystem>

#include "mkvparser/mkvparser.h"

namespace kvlhost {
namespace {

// mkvparser's own number doesn't change with every release of the library;
// the file the loader took, its links resolved, tells which copy runs.
std::string LibraryFile() {
  Dl_info info = {};
  if (dladdr(reinterpret_cast<void*>(&mkvparser::GetVersion), &info) == 0 || !info.dli_fname)
    return "file unknown";
  std::error_code error;
  const std::filesystem::path file = std::filesystem::canonical(info.dli_fname, error);
  return error ? info.dli_fname : file.string();
}

}  // namespace

std::string VersionText() {
  int major = 0, minor = 0, build = 0, revision = 0;
  mkvparser::GetVersion(major, minor, build, revision);
  return "MKVSource " MKVSOURCE_VERSION "\nlibwebm mkvparser " + std::to_string(major) + '.' +
         std::to_string(minor) + '.' + std::to_string(build) + '.' + std::to_string(revision) +
         " (" + LibraryFile() + ")";
}

}  // namespace kvlhost
