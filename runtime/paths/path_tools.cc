#include "runtime/paths/path_tools.h"

#include <cctype>
#include <string>

namespace KVL {
namespace PathTools {
namespace {

bool IsFileScheme(const std::string& scheme) {
  static const char kFile[] = "file";
  if (scheme.size() != sizeof(kFile) - 1) return false;
  for (size_t i = 0; i < scheme.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(scheme[i])) != kFile[i]) return false;
  }
  return true;
}

// What follows "file:": an optional "//authority", then the path, then an
// optional "?query" and "#fragment", which are dropped. A trailing slash is
// dropped too, as URL libraries report a path.
std::string PathPart(const std::string& rest) {
  std::string path = rest.substr(0, rest.find_first_of("?#"));
  if (path.compare(0, 2, "//") == 0) {
    const size_t slash = path.find('/', 2);
    path = slash == std::string::npos ? std::string() : path.substr(slash);
  }
  if (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

unsigned int URIToSystemFilePath(const vorq_string<unsigned char>& uri,
                                 vorq_string<unsigned char>& path) {
  // A URI without text converts to nothing.
  if (!uri.data()) return kNotAFilePath;
  const std::string text(reinterpret_cast<const char*>(uri.data()), uri.length());
  // Only the "file" scheme names a path, so the scheme needs no check of
  // its own: whatever else stands before the first ":" is not "file".
  const size_t colon = text.find(':');
  if (colon == std::string::npos || !IsFileScheme(text.substr(0, colon))) return kNotAFilePath;
  const std::string result = PathPart(text.substr(colon + 1));
  // An empty path names no file; refuse it here rather than at open.
  if (result.empty()) return kNotAFilePath;
  path = vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(result.c_str()));
  return 0;
}

}  // namespace PathTools
}  // namespace KVL
