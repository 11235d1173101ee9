#ifndef PLUGIN_KVL_PLUGIN_CONTEXT_H_
#define PLUGIN_KVL_PLUGIN_CONTEXT_H_

#include <set>
#include <string>
#include <vector>

#include "plugin/kvl/export.h"
#include "plugin/kvl/text.h"

namespace KVL {

// The engine's object behind a plug-in. The plug-in asks it one question:
// can the engine handle this video format text? The stand-in engine answers
// from a refusal list that its host fills; by default every text passes.
class KVL_API PluginContext {
 public:
  bool checkVideoFormat(const vorq_string<char>& format);

  void refuseVideoFormat(const std::string& format);
  // Every format text the plug-in has asked about, in order.
  const std::vector<std::string>& askedFormats() const { return asked_; }

 private:
  std::set<std::string> refused_;
  std::vector<std::string> asked_;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_PLUGIN_CONTEXT_H_
