#ifndef PLUGIN_KVL_PLUGIN_H_
#define PLUGIN_KVL_PLUGIN_H_

#include <atomic>

#include "plugin/kvl/export.h"
#include "plugin/kvl/plugin_context.h"
#include "plugin/kvl/text.h"

namespace KVL {

struct PluginInfo;

// Root of every plug-in object. Reference counting is the engine's: an object
// starts with one hold, and the release that drops the last one deletes it.
class KVL_API Plugin {
 public:
  explicit Plugin(PluginContext* context);
  virtual ~Plugin();

  virtual int retain();
  virtual int release();
  virtual int holdCount();
  virtual const PluginInfo* getPluginInfo() const;
  virtual PluginContext* getPluginContext() const;
  virtual int getInterface(const vorq_string<char>& name, void** result) = 0;

 protected:
  PluginContext* context;

 private:
  std::atomic<int> holds_{1};
};

}  // namespace KVL

#endif  // PLUGIN_KVL_PLUGIN_H_
