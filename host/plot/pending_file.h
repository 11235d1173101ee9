#ifndef HOST_PLOT_PENDING_FILE_H_
#define HOST_PLOT_PENDING_FILE_H_

#include <string>

namespace kvlhost {

// A file written under a temporary name beside its path and renamed to the
// path once complete, so that nothing half-written ever stands under it.
// Failures throw a HostError with kHostFailure; the temporary file goes
// with the object unless Commit() renamed it.
class PendingFile {
 public:
  // Makes the temporary file at once: a path that can't be written fails
  // before any work is done for it.
  explicit PendingFile(std::string path);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  const std::string& path() const { return path_; }
  // Open for writing until Commit().
  int descriptor() const { return descriptor_; }
  // Closes the file and puts it under its path.
  void Commit();

 private:
  [[noreturn]] void Fail();

  std::string path_;
  std::string temporary_;
  int descriptor_ = -1;
};

}  // namespace kvlhost

#endif  // HOST_PLOT_PENDING_FILE_H_
