#ifndef PLUGIN_KVL_REMOTE_FILE_INTERFACE_H_
#define PLUGIN_KVL_REMOTE_FILE_INTERFACE_H_

#include <boost/thread/recursive_mutex.hpp>

#include "plugin/kvl/export.h"

namespace KVL {

// A source that may be remote. Its mutex is built and destroyed with the
// object and locked by nobody.
class KVL_API RemoteFileInterface {
 public:
  virtual ~RemoteFileInterface();
  virtual int getBufferingProgress() = 0;

 private:
  boost::recursive_mutex mutex_;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_REMOTE_FILE_INTERFACE_H_
