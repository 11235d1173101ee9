#include "host/plot/pending_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "host/engine_side/host_error.h"

namespace kvlhost {
namespace {

// Temporary names tried before giving up on leftovers of earlier runs.
constexpr int kNamesTried = 100;

}  // namespace

// Not mkstemp(): its file would keep mode 0600 whatever the umask says.
PendingFile::PendingFile(std::string path) : path_(std::move(path)) {
  const std::string stem = path_ + ".tmp" + std::to_string(getpid()) + "-";
  for (int attempt = 0; attempt < kNamesTried && descriptor_ < 0; ++attempt) {
    const std::string name = stem + std::to_string(attempt);
    descriptor_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor_ >= 0) temporary_ = name;
    else if (errno != EEXIST) Fail();
  }
  if (descriptor_ < 0) Fail();
}

PendingFile::~PendingFile() {
  if (descriptor_ >= 0) close(descriptor_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void PendingFile::Commit() {
  const int descriptor = descriptor_;
  descriptor_ = -1;
  if (close(descriptor) != 0 || std::rename(temporary_.c_str(), path_.c_str()) != 0) Fail();
  temporary_.clear();
}

void PendingFile::Fail() {
  throw HostError(kHostFailure, "cannot write " + path_ + ": " + std::strerror(errno));
}

}  // namespace kvlhost
