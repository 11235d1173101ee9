#include <sys/stat.h>

#include <memory>
#include <new>

#include <boost/thread/locks.hpp>

#include "plugin/kvl/result_codes.h"
#include "plugin/mkv_source.h"
#include "runtime/paths/path_tools.h"
#include "runtime/text/unicode_conversions.h"
#include "runtime/text/vorq_string.h"
#include "runtime/text/vorq_string_compare.h"
#include "streams/title_internal.h"

namespace KVL {
namespace {

using SourceLock = boost::unique_lock<boost::recursive_mutex>;

struct TextDeleter {
  void operator()(VorQString* text) const { VorQStringDeallocate(text); }
};
using OwnedText = std::unique_ptr<VorQString, TextDeleter>;

// `path` as a new runtime text of its own block.
OwnedText ToVorQString(const vorq_string<unsigned char>& path) {
  OwnedText text(VorQStringAllocate(path.length() + 1));
  if (!text) throw std::bad_alloc();
  UTF8StringToVorQString(path.data(), text.get(), path.length());
  return text;
}

}  // namespace

unsigned int MKVSource::openFile(const vorq_string<unsigned char>& fileUri) {
  vorq_string<unsigned char> path;
  if (PathTools::URIToSystemFilePath(fileUri, path) != 0) return kUriNotAFilePath;
  OwnedText text = ToVorQString(path);
  if (inspectedFile && VorQStringLen(inspectedFile->path) == VorQStringLen(text.get()) &&
      VorQStringCmp(inspectedFile->path, text.get()) == 0) {
    return 0;
  }
  closeFile();
  releaseInspectedFile();
  inspectedFile = new InspectedFile{text.get()};
  text.release();
  return 0;
}

void MKVSource::releaseInspectedFile() {
  if (!inspectedFile) return;
  VorQStringDeallocate(inspectedFile->path);
  delete inspectedFile;
  inspectedFile = nullptr;
}

// The holder stays until another file replaces it or the object ends.
int MKVSource::closeFile() { return 0; }

int MKVSource::getSize(unsigned long long& size) {
  if (!inspectedFile) {
    size = 0;
    return 0;
  }
  struct stat status;
  if (stat(inspectedFile->path, &status) == 0)
    size = static_cast<unsigned long long>(status.st_size);
  return 0;
}

int MKVSource::getDuration(unsigned long, unsigned long long&) { return 0; }

int MKVSource::getFileSize(unsigned long long* size) {
  SourceLock lock(mainTitle->mutex);
  return size ? 0 : kFailed;
}

int MKVSource::getBufferingProgress() {
  SourceLock lock(mainTitle->mutex);
  return 0;
}

vorq_string<unsigned char> MKVSource::getFilename() {
  return vorq_string<unsigned char>(uri.c_str());
}

}  // namespace KVL
