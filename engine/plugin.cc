#include "plugin/kvl/plugin.h"

namespace KVL {

Plugin::Plugin(PluginContext* context) : context(context) {}
Plugin::~Plugin() = default;

int Plugin::retain() { return ++holds_; }

int Plugin::release() {
  const int left = --holds_;
  if (left == 0) delete this;
  return left;
}

int Plugin::holdCount() { return holds_; }
const PluginInfo* Plugin::getPluginInfo() const { return nullptr; }
PluginContext* Plugin::getPluginContext() const { return context; }

}  // namespace KVL
