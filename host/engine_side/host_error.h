#ifndef HOST_ENGINE_SIDE_HOST_ERROR_H_
#define HOST_ENGINE_SIDE_HOST_ERROR_H_

#include <stdexcept>
#include <string>

namespace kvlhost {

// The exit statuses of kvl-play, which scripts rely on.
enum ExitStatus : int {
  kPlayed = 0,
  kNotPlayable = 1,
  kUsage = 2,
  kNotOpened = 3,
  kModuleProblem = 4,
  // Output that can't be written, or any other failure of the host itself.
  kHostFailure = 5,
  // --stress found a rule broken.
  kStressRuleBroken = 6,
  // The source path is missing, can't be read or isn't a regular file.
  kFileUnreadable = 7,
  // The source file was replaced, cut or rewritten while it played.
  kFileChanged = 8,
  // A play from the start got nothing from a stream of a title with a length.
  kStreamSilent = 9,
};

// A failure that ends the run: a one-line message and the exit status.
class HostError : public std::runtime_error {
 public:
  HostError(ExitStatus status, const std::string& message)
      : std::runtime_error(message), status_(status) {}
  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

}  // namespace kvlhost

#endif  // HOST_ENGINE_SIDE_HOST_ERROR_H_
