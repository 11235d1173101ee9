#include "runtime/paths/path_tools.h"

#include <string>

#include "gtest/gtest.h"

namespace KVL {
namespace {

using Text = vorq_string<unsigned char>;

Text T(const std::string& text) {
  return Text(reinterpret_cast<const unsigned char*>(text.c_str()));
}

std::string S(const Text& text) {
  const auto bytes = text.toStlString();
  return std::string(bytes.begin(), bytes.end());
}

TEST(URIToSystemFilePath, TakesThePathOfFileUris) {
  const struct {
    const char* uri;
    const char* path;  // null: not a file path
  } cases[] = {{"file:///Movies/a%20b.mkv", "/Movies/a%20b.mkv"}, {"FILE:///tmp/x", "/tmp/x"},
               {"file://localhost/tmp/x", "/tmp/x"}, {"file:/tmp/x", "/tmp/x"},
               {"file:///tmp/x?query#fragment", "/tmp/x"}, {"file:///tmp/dir/", "/tmp/dir"},
               {"file:///", "/"}, {"/tmp/x", nullptr}, {"files:///tmp/x", nullptr},
               {"fila:///tmp/x", nullptr}, {":///tmp/x", nullptr}, {"file://host", nullptr},
               {"file", nullptr}, {"", nullptr}};
  for (const auto& c : cases) {
    Text path = T("untouched");
    const unsigned int result = PathTools::URIToSystemFilePath(T(c.uri), path);
    if (c.path) {
      EXPECT_EQ(0u, result) << c.uri;
      EXPECT_EQ(c.path, S(path)) << c.uri;
    } else {
      EXPECT_EQ(PathTools::kNotAFilePath, result) << c.uri;
      EXPECT_EQ("untouched", S(path)) << c.uri;
    }
  }
  Text path = T("untouched");  // a URI without text
  EXPECT_EQ(0x80800001u, PathTools::URIToSystemFilePath(Text(), path));
  EXPECT_EQ("untouched", S(path));
}

}  // namespace
}  // namespace KVL
