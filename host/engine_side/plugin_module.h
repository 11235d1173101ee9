#ifndef HOST_ENGINE_SIDE_PLUGIN_MODULE_H_
#define HOST_ENGINE_SIDE_PLUGIN_MODULE_H_

#include <string>

#include "plugin/kvl/container_interface.h"
#include "plugin/kvl/file_inspector_interface.h"
#include "plugin/kvl/media_interface.h"
#include "plugin/kvl/plugin.h"
#include "plugin/kvl/plugin_context.h"

namespace kvlhost {

// A loaded plug-in module and the one plug-in object made from it. The
// constructor loads the module, calls its `_getPlugin` and asks the object
// for its container and inspector; any failure throws a HostError with
// kModuleProblem and leaves nothing loaded. The destructor releases the
// object, then unloads the module: everything the module made (streams,
// chunks, texts and lists it returned) must be gone by then.
class PluginModule {
 public:
  static constexpr const char* kContainerInterface =
      "com.vorq.streamengine.interface.container";
  static constexpr const char* kInspectorInterface =
      "com.vorq.streamengine.interface.fileInspector";

  // `context` must outlive this object.
  PluginModule(const std::string& path, KVL::PluginContext* context);
  ~PluginModule();
  PluginModule(const PluginModule&) = delete;
  PluginModule& operator=(const PluginModule&) = delete;

  // MKVSource.so beside the running executable, as in the build tree, else
  // in the installed plug-in folder: MKVSOURCE_PLUGIN_DIR, relative to the
  // executable's folder, comes from the install rules.
  static std::string DefaultPath();

  const std::string& path() const { return path_; }
  KVL::Plugin& plugin() const { return *plugin_; }
  KVL::ContainerInterface& container() const { return *container_; }
  KVL::FileInspectorInterface& inspector() const { return *inspector_; }
  KVL::MediaInterface& media() const { return *media_; }

 private:
  void MakePlugin(KVL::PluginContext* context);
  void* Interface(const char* name) const;
  void Unload();

  std::string path_;
  void* handle_ = nullptr;
  KVL::Plugin* plugin_ = nullptr;
  KVL::ContainerInterface* container_ = nullptr;
  KVL::FileInspectorInterface* inspector_ = nullptr;
  KVL::MediaInterface* media_ = nullptr;
};

}  // namespace kvlhost

#endif  // HOST_ENGINE_SIDE_PLUGIN_MODULE_H_
