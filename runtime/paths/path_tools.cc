#include "runtime/paths/path_tools.h"

#include <cctype>
#include <string>

namespace KVL {
namespace PathTools {
namespace {

bool IsSchemeChar(unsigned char c) {
  return std::isalnum(c) || c == '+' || c == '-' || c == '.';
}

// The scheme is the text before the first ":" when it starts with a letter
// and holds only scheme characters; anything else has no scheme.
bool SplitScheme(const std::string& uri, std::string* scheme, std::string* rest) {
  const size_t colon = uri.find(':');
  if (colon == std::string::npos || colon == 0) return false;
  if (!std::isalpha(static_cast<unsigned char>(uri[0]))) return false;
  for (size_t i = 1; i < colon; ++i) {
    if (!IsSchemeChar(static_cast<unsigned char>(uri[i]))) return false;
  }
  *scheme = uri.substr(0, colon);
  *rest = uri.substr(colon + 1);
  return true;
}

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
  std::string scheme, rest;
  if (!SplitScheme(text, &scheme, &rest) || !IsFileScheme(scheme)) return kNotAFilePath;
  const std::string result = PathPart(rest);
  // An empty path names no file; refuse it here rather than at open.
  if (result.empty()) return kNotAFilePath;
  path = vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(result.c_str()));
  return 0;
}

}  // namespace PathTools
}  // namespace KVL
