#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <ext/stdio_filebuf.h>

#include "host/engine_side/host_error.h"
#include "host/heap_pages.h"
#include "host/run_host.h"

// Standard output is the report's alone. The plug-in writes its own
// progress lines to standard output with printf: those go to standard error,
// by putting the error descriptor under descriptor 1 and writing the report
// to a copy of the original descriptor 1.
int main(int argc, char** argv) {
  kvlhost::UseHugeHeapPages();
  const int reportFd = dup(STDOUT_FILENO);
  if (reportFd < 0 || dup2(STDERR_FILENO, STDOUT_FILENO) < 0) {
    std::perror("kvl-play: cannot set up standard output");
    return kvlhost::kHostFailure;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);

  int status;
  {
    __gnu_cxx::stdio_filebuf<char> reportBuffer(reportFd, std::ios::out);
    std::ostream report(&reportBuffer);
    kvlhost::HostStreams streams{report, std::cerr,
                                 isatty(STDERR_FILENO) ? &std::cerr : nullptr};
    status = kvlhost::RunHost(argc, argv, streams);
    report.flush();
  }
  std::fflush(stdout);
  return status;
}
