#ifndef HOST_PLAY_SOURCE_FILE_H_
#define HOST_PLAY_SOURCE_FILE_H_

#include <sys/stat.h>

#include <optional>
#include <string>
#include <utility>

namespace kvlhost {

// The local file behind a source URI, looked at before the module is asked
// anything and again when the play is over. The plug-in's reader knows no
// read error: a file cut or swapped under a play ends its streams quietly,
// so only the host can tell that what played is not what was asked for.
class SourceFile {
 public:
  // Nothing for a URI that names no local file (a scheme other than
  // "file"); the path is the one the plug-in will open. Throws a HostError
  // with kFileUnreadable, naming the path and the system's reason, for a
  // path that is missing, can't be read or isn't a regular file.
  static std::optional<SourceFile> Look(const std::string& uri);

  const std::string& path() const { return path_; }
  // How the file differs now from when it was looked at ("replaced",
  // "removed", "size 8000 -> 100", "modified"); empty if it doesn't.
  std::string Change() const;

 private:
  SourceFile(std::string path, const struct stat& seen) : path_(std::move(path)), seen_(seen) {}

  std::string path_;
  struct stat seen_;
};

}  // namespace kvlhost

#endif  // HOST_PLAY_SOURCE_FILE_H_
