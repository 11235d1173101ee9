#include "host/play/source_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "host/engine_side/host_error.h"
#include "runtime/paths/path_tools.h"

namespace kvlhost {
namespace {

// The plug-in's own conversion, so that the path looked at is the one it opens.
std::optional<std::string> LocalPath(const std::string& uri) {
  KVL::vorq_string<unsigned char> path;
  const KVL::vorq_string<unsigned char> text(reinterpret_cast<const unsigned char*>(uri.c_str()));
  if (KVL::PathTools::URIToSystemFilePath(text, path) != 0) return std::nullopt;
  const auto* data = reinterpret_cast<const char*>(path.data());
  return std::string(data ? data : "");
}

[[noreturn]] void Unreadable(const std::string& path, const char* reason) {
  throw HostError(kFileUnreadable, "cannot read " + path + ": " + reason);
}

bool SameTime(const timespec& a, const timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

std::optional<SourceFile> SourceFile::Look(const std::string& uri) {
  const std::optional<std::string> path = LocalPath(uri);
  if (!path) return std::nullopt;
  struct stat seen;
  if (stat(path->c_str(), &seen) != 0) Unreadable(*path, std::strerror(errno));
  if (S_ISDIR(seen.st_mode)) Unreadable(*path, std::strerror(EISDIR));
  if (!S_ISREG(seen.st_mode)) Unreadable(*path, "not a regular file");
  // Opening is the one true test of permission, whoever this process runs as.
  const int descriptor = open(path->c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) Unreadable(*path, std::strerror(errno));
  close(descriptor);
  return SourceFile(*path, seen);
}

std::string SourceFile::Change() const {
  struct stat now;
  if (stat(path_.c_str(), &now) != 0) return "removed";
  if (now.st_dev != seen_.st_dev || now.st_ino != seen_.st_ino) return "replaced";
  if (now.st_size != seen_.st_size)
    return "size " + std::to_string(seen_.st_size) + " -> " + std::to_string(now.st_size);
  if (!SameTime(now.st_mtim, seen_.st_mtim)) return "modified";
  return "";
}

}  // namespace kvlhost
