#ifndef HOST_ENGINE_SIDE_LOADED_ENGINE_H_
#define HOST_ENGINE_SIDE_LOADED_ENGINE_H_

#include <memory>
#include <string>
#include <vector>

#include "host/engine_side/host_control.h"
#include "host/engine_side/plugin_module.h"
#include "plugin/kvl/plugin_context.h"

namespace kvlhost {

// One loaded module, initialised with the host's control object as the
// engine would: its PluginContext holds the refused formats. An empty
// `module` is MKVSource.so beside the executable.
class LoadedEngine {
 public:
  LoadedEngine(const std::string& module, const std::vector<std::string>& refuse);

  PluginModule& module() { return module_; }
  HostControl& control() { return control_; }

 private:
  // Declared in the order they must outlive one another.
  HostControl control_;
  std::unique_ptr<KVL::PluginContext> context_;
  PluginModule module_;
};

}  // namespace kvlhost

#endif  // HOST_ENGINE_SIDE_LOADED_ENGINE_H_
