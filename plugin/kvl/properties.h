#ifndef PLUGIN_KVL_PROPERTIES_H_
#define PLUGIN_KVL_PROPERTIES_H_

#include <cstdint>

#include "plugin/kvl/export.h"

namespace KVL {

class KVL_API Properties {
 public:
  virtual ~Properties();
};

class KVL_API ImageProperties : public Properties {
 public:
  uint32_t width = 0;
  uint32_t height = 0;
  uint32_t aspectX = 0;
  uint32_t aspectY = 0;
};

class KVL_API AudioProperties : public Properties {
 public:
  uint32_t sampleRate = 0;
  uint32_t channels = 0;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_PROPERTIES_H_
