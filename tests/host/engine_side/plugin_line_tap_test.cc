// The plug-in's lines under a tap: per-call lines counted, the others passed on whole, in order,
// the last even without its newline; more than a pipe holds passes while it is written.
#include "host/engine_side/plugin_line_tap.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "tests/support/temp_file.h"

namespace kvlhost {
namespace {

// Runs `print` with standard output in a file; returns what reached the file.
template <typename Print>
std::string CaughtOutput(Print print) {
  const std::string path = mkvtest::NewTempPath(".txt");
  std::fflush(stdout);
  const int saved = dup(STDOUT_FILENO);
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(file, STDOUT_FILENO);
  close(file);
  print();
  std::fflush(stdout);
  dup2(saved, STDOUT_FILENO);
  close(saved);
  std::ifstream in(path);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(PluginLineTap, CountsPerCallLinesAndPassesTheRest) {
  PluginLineCounts counts;
  const std::string passed = CaughtOutput([&] {
    PluginLineTap tap;
    std::printf("AutoChapter start: 0 end: 1\n");
    for (int i = 0; i < 5000; ++i) {
      std::printf("Reset Audio Stream 1\nAudio Stream 1: seeked to %d (requested time: %d)\n",
                  i, i);
      std::printf("Audio Stream 1: seeked/scanned to %d (requested time: %d)\n", i, i);
    }
    std::printf("Video Stream 0: seeked to 23 (requested time: 0)\nReset Video Stream 0\n");
    std::printf("Video Stream 0: got sync point 5 from time 5 (looking forward)\n");
    std::puts("Audio Stream 1: assumed zero sync point");
    std::puts("couldn't find chapter by time.");
    std::printf("open failed on 'x' with -1\nno newline");
    counts = tap.Stop();
  });
  EXPECT_EQ(passed, "AutoChapter start: 0 end: 1\nopen failed on 'x' with -1\nno newline");
  EXPECT_EQ(CountsText(counts), "plug-in lines: 10001 seek, 5001 reset, 2 sync point, 1 chapter");
}

}  // namespace
}  // namespace kvlhost
