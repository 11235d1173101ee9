#ifndef READER_MKV_READER_INTERFACE_H_
#define READER_MKV_READER_INTERFACE_H_

#include "mkvparser/mkvparser.h"

namespace KVL {

// The parser's reader, widened by what the source needs of the same object:
// Open, Close and deletion through the interface. The parser's own slots
// (Read, Length) come first in the table, as the packaged parser calls them.
class IMkvReader : public mkvparser::IMkvReader {
 public:
  ~IMkvReader() override = default;
  // 0 on success, -1 on failure, or while a file is held open already.
  virtual int Open(const char* fileName) = 0;
  // Nothing happens when no file is open.
  virtual void Close() = 0;
};

}  // namespace KVL

#endif  // READER_MKV_READER_INTERFACE_H_
