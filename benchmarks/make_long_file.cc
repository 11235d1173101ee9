// Writes a long Matroska file for measurements by hand, e.g. with strace:
//   make_long_file /tmp/long.mkv 20 && strace -c -f kvl-play /tmp/long.mkv
#include <cstdio>
#include <cstdlib>

#include "benchmarks/long_file.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: make_long_file PATH [MINUTES]\n");
    return 2;
  }
  const int minutes = argc > 2 ? std::atoi(argv[2]) : 20;
  if (minutes <= 0) {
    std::fprintf(stderr, "make_long_file: MINUTES must be a positive number\n");
    return 2;
  }
  mkvbench::WriteLongFile(argv[1], minutes);
  return 0;
}
