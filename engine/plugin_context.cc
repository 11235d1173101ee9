#include "plugin/kvl/plugin_context.h"

namespace KVL {

bool PluginContext::checkVideoFormat(const vorq_string<char>& format) {
  asked_.push_back(format.toStlString());
  return refused_.count(asked_.back()) == 0;
}

void PluginContext::refuseVideoFormat(const std::string& format) { refused_.insert(format); }

}  // namespace KVL
