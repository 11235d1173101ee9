#include <memory>

#include "plugin/mkv_source.h"

// The one function the engine looks up by name. Should construction throw,
// the exception leaves here and `*plugin` is not written.
extern "C" __attribute__((visibility("default"))) int _getPlugin(KVL::PluginContext* context,
                                                                  void** plugin) {
  KVL::Plugin* made = new KVL::MKVSource(context);
  *plugin = made;
  return 0;
}
