#ifndef PLUGIN_KVL_LOGGER_H_
#define PLUGIN_KVL_LOGGER_H_

#include "plugin/kvl/export.h"

namespace KVL {

// The engine's log: one line on standard error naming module, function and
// line.
class KVL_API Logger {
 public:
  static Logger& instance();
  void log(const char* module, const char* function, unsigned long line,
           const char* format, ...) const __attribute__((format(printf, 5, 6)));
};

}  // namespace KVL

#endif  // PLUGIN_KVL_LOGGER_H_
