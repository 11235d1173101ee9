#include "host/engine_side/loaded_engine.h"

namespace kvlhost {
namespace {

std::unique_ptr<KVL::PluginContext> MakeContext(const std::vector<std::string>& refuse) {
  auto context = std::make_unique<KVL::PluginContext>();
  for (const std::string& format : refuse) context->refuseVideoFormat(format);
  return context;
}

}  // namespace

LoadedEngine::LoadedEngine(const std::string& module, const std::vector<std::string>& refuse)
    : context_(MakeContext(refuse)),
      module_(module.empty() ? PluginModule::DefaultPath() : module, context_.get()) {
  module_.container().init(&control_, control_.createUID());
  control_.attach(&module_.container());
}

}  // namespace kvlhost
