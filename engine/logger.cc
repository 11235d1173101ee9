#include "plugin/kvl/logger.h"

#include <cstdarg>
#include <cstdio>

namespace KVL {

Logger& Logger::instance() {
  static Logger logger;
  return logger;
}

void Logger::log(const char* module, const char* function, unsigned long line,
                 const char* format, ...) const {
  std::fprintf(stderr, "[%s] %s:%lu: ", module, function, line);
  va_list args;
  va_start(args, format);
  std::vfprintf(stderr, format, args);
  va_end(args);
}

}  // namespace KVL
