#include "host/engine_side/plugin_line_tap.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "host/engine_side/host_error.h"

namespace kvlhost {
namespace {

constexpr struct {
  const char* marker;
  uint64_t PluginLineCounts::*count;
} kCountedLines[] = {
    {": seeked", &PluginLineCounts::seek},
    {"Reset ", &PluginLineCounts::reset},
    {" sync point", &PluginLineCounts::syncPoint},
    {"couldn't find chapter", &PluginLineCounts::chapter},
};

HostError TapFailure() {
  return HostError(kHostFailure,
                   std::string("cannot take the plug-in's output: ") + std::strerror(errno));
}

void WriteAll(int fd, const std::string& text) {
  for (size_t done = 0; done < text.size();) {
    const ssize_t written = write(fd, text.data() + done, text.size() - done);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;  // nowhere to pass it on: the line is dropped
    done += static_cast<size_t>(written);
  }
}

}  // namespace

std::string CountsText(const PluginLineCounts& counts) {
  return "plug-in lines: " + std::to_string(counts.seek) + " seek, " +
         std::to_string(counts.reset) + " reset, " + std::to_string(counts.syncPoint) +
         " sync point, " + std::to_string(counts.chapter) + " chapter";
}

PluginLineTap::PluginLineTap() {
  std::fflush(stdout);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw TapFailure();
  pipe_ = ends[0];
  original_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
  if (original_ < 0 || dup2(ends[1], STDOUT_FILENO) < 0) {
    const HostError failure = TapFailure();
    close(ends[1]);
    close(pipe_);
    if (original_ >= 0) close(original_);
    throw failure;
  }
  close(ends[1]);
  try {
    passer_ = std::thread([this] { Pass(); });
  } catch (...) {
    dup2(original_, STDOUT_FILENO);
    close(original_);
    close(pipe_);
    throw;
  }
}

PluginLineTap::~PluginLineTap() { Stop(); }

// Standard output back on its own descriptor closes the pipe's last writing
// end, so the passer reads to the end and returns.
const PluginLineCounts& PluginLineTap::Stop() {
  if (!passer_.joinable()) return counts_;
  std::fflush(stdout);
  dup2(original_, STDOUT_FILENO);
  passer_.join();
  close(pipe_);
  close(original_);
  return counts_;
}

void PluginLineTap::Pass() {
  char buffer[4096];
  for (;;) {
    const ssize_t got = read(pipe_, buffer, sizeof(buffer));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    partial_.append(buffer, static_cast<size_t>(got));
    size_t start = 0;
    for (size_t end; (end = partial_.find('\n', start)) != std::string::npos; start = end + 1)
      Take(partial_.substr(start, end + 1 - start));
    partial_.erase(0, start);
  }
  if (!partial_.empty()) Take(partial_);
}

void PluginLineTap::Take(const std::string& line) {
  for (const auto& counted : kCountedLines) {
    if (line.find(counted.marker) == std::string::npos) continue;
    ++(counts_.*counted.count);
    return;
  }
  WriteAll(original_, line);
}

}  // namespace kvlhost
