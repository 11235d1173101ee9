// Copies a Matroska file as a live recording leaves it: the size of the
// Segment and of every Cluster written as "unknown", in the same number of
// bytes, and nothing else changed, so that every tool sees the same packets.
//   make_unknown_size IN OUT
// A file that can't be walked by its sizes to the end (an unknown size
// already in it, or an element that can't be read) is refused.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "tests/support/unknown_sizes.h"

namespace {

int Fail(const char* what, const char* path) {
  std::fprintf(stderr, "make_unknown_size: %s %s\n", what, path);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_unknown_size IN OUT\n");
    return 2;
  }
  std::error_code error;
  if (!std::filesystem::is_regular_file(argv[1], error)) return Fail("no file at", argv[1]);
  std::ifstream in(argv[1], std::ios::binary | std::ios::ate);
  if (!in) return Fail("cannot open", argv[1]);
  mkvtest::Bytes file(static_cast<size_t>(std::max<std::streamoff>(0, in.tellg())));
  in.seekg(0);
  if (!in.read(reinterpret_cast<char*>(file.data()), static_cast<std::streamsize>(file.size())))
    return Fail("cannot read", argv[1]);
  bool whole = false;
  const auto fields = mkvtest::SegmentAndClusterSizeFields(file, &whole);
  if (!whole || fields.empty()) return Fail("no Matroska layout of known sizes in", argv[1]);
  mkvtest::WriteUnknownSizes(file, fields);
  std::ofstream out(argv[2], std::ios::binary);
  out.write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
  out.close();
  return out ? 0 : Fail("cannot write", argv[2]);
}
