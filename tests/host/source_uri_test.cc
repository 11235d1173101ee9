#include "host/source_uri.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace kvlhost {
namespace {

TEST(SourceUri, SchemesStayPathsBecomeRawFileUris) {
  const std::string cwd = std::filesystem::current_path().string();
  const struct {
    const char* argument;
    std::string uri;
  } cases[] = {
      {"/tmp/a.mkv", "file:///tmp/a.mkv"},
      {"/tmp/a b%20c.mkv", "file:///tmp/a b%20c.mkv"},  // nothing escaped
      {"/tmp/../tmp/./a.mkv", "file:///tmp/a.mkv"},
      {"a.mkv", "file://" + cwd + "/a.mkv"},
      {"./x:y.mkv", "file://" + cwd + "/x:y.mkv"},  // a colon after a dot is no scheme
      {"FILE:/tmp/a.mkv", "FILE:/tmp/a.mkv"},
      {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(SourceUri(c.argument), c.uri) << c.argument;
}

}  // namespace
}  // namespace kvlhost
