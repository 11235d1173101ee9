#include "host/play/source_uri.h"

#include <cctype>
#include <filesystem>

namespace kvlhost {
namespace {

// A scheme is a letter followed by letters, digits, "+", "-" or ".", then ":".
bool HasScheme(const std::string& text) {
  const size_t colon = text.find(':');
  if (colon == std::string::npos || colon == 0) return false;
  if (!std::isalpha(static_cast<unsigned char>(text[0]))) return false;
  for (size_t i = 1; i < colon; ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (!std::isalnum(c) && c != '+' && c != '-' && c != '.') return false;
  }
  return true;
}

}  // namespace

std::string SourceUri(const std::string& argument) {
  if (argument.empty() || HasScheme(argument)) return argument;
  std::error_code ignored;
  std::filesystem::path path = std::filesystem::absolute(argument, ignored);
  if (path.empty()) path = argument;
  return "file://" + path.lexically_normal().string();
}

}  // namespace kvlhost
