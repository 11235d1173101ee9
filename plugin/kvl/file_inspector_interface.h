#ifndef PLUGIN_KVL_FILE_INSPECTOR_INTERFACE_H_
#define PLUGIN_KVL_FILE_INSPECTOR_INTERFACE_H_

#include "plugin/kvl/export.h"
#include "plugin/kvl/text.h"

namespace KVL {

// Looks at a file by URI without playing it.
class KVL_API FileInspectorInterface {
 public:
  virtual ~FileInspectorInterface();
  virtual unsigned int openFile(const vorq_string<unsigned char>& uri) = 0;
  virtual int closeFile() = 0;
  virtual int getSize(unsigned long long& size) = 0;
  virtual int getDuration(unsigned long index, unsigned long long& duration) = 0;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_FILE_INSPECTOR_INTERFACE_H_
