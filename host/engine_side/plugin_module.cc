#include "host/engine_side/plugin_module.h"

#include <dlfcn.h>

#include <filesystem>

#include "host/engine_side/host_error.h"

namespace kvlhost {
namespace {

using GetPluginFunction = int (*)(KVL::PluginContext*, void**);

// A bare name would send dlopen() searching the library path; the option
// names a file.
std::string FilePath(const std::string& path) {
  std::error_code ignored;
  const std::filesystem::path absolute = std::filesystem::absolute(path, ignored);
  return absolute.empty() ? path : absolute.string();
}

[[noreturn]] void Fail(const std::string& message) {
  throw HostError(kModuleProblem, message);
}

// dlerror() texts can run over several lines; the host's errors are one.
std::string OneLine(const char* text) {
  std::string line = text ? text : "unknown error";
  for (char& c : line) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  return line;
}

}  // namespace

PluginModule::PluginModule(const std::string& path, KVL::PluginContext* context)
    : path_(FilePath(path)) {
  handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) Fail("cannot load module: " + OneLine(dlerror()));
  try {
    MakePlugin(context);
  } catch (...) {
    Unload();
    throw;
  }
}

PluginModule::~PluginModule() { Unload(); }

std::string PluginModule::DefaultPath() {
  constexpr char kName[] = "MKVSource.so";
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return kName;
  const std::filesystem::path beside = self.parent_path() / kName;
  if (std::filesystem::exists(beside, error)) return beside.string();
  return (self.parent_path() / MKVSOURCE_PLUGIN_DIR / kName).lexically_normal().string();
}

void PluginModule::MakePlugin(KVL::PluginContext* context) {
  dlerror();
  auto getPlugin = reinterpret_cast<GetPluginFunction>(dlsym(handle_, "_getPlugin"));
  if (!getPlugin) Fail("not a plug-in module (no _getPlugin): " + path_);
  void* made = nullptr;
  if (getPlugin(context, &made) != 0 || !made) Fail("_getPlugin made no object: " + path_);
  plugin_ = static_cast<KVL::Plugin*>(made);
  container_ = static_cast<KVL::ContainerInterface*>(Interface(kContainerInterface));
  inspector_ = static_cast<KVL::FileInspectorInterface*>(Interface(kInspectorInterface));
  // Chapter navigation has no interface name: the engine reaches it through
  // the object's own type. The contract's classes keep their type
  // information in KVL_Core, shared by host and module, so the cross-cast
  // works across the module border.
  media_ = dynamic_cast<KVL::MediaInterface*>(plugin_);
  if (!media_) Fail("plug-in object has no chapter navigation: " + path_);
}

void* PluginModule::Interface(const char* name) const {
  void* result = nullptr;
  if (plugin_->getInterface(KVL::vorq_string<char>(name), &result) != 0 || !result)
    Fail(std::string("plug-in object has no interface ") + name + ": " + path_);
  return result;
}

void PluginModule::Unload() {
  if (plugin_) plugin_->release();
  plugin_ = nullptr;
  container_ = nullptr;
  inspector_ = nullptr;
  media_ = nullptr;
  if (handle_) dlclose(handle_);
  handle_ = nullptr;
}

}  // namespace kvlhost
