#ifndef PLUGIN_KVL_MEDIA_INTERFACE_H_
#define PLUGIN_KVL_MEDIA_INTERFACE_H_

#include <cstdint>

#include "plugin/kvl/export.h"
#include "plugin/kvl/text.h"

namespace KVL {

// Chapter navigation. Times are in units of 10 microseconds.
class KVL_API MediaInterface {
 public:
  virtual ~MediaInterface();
  virtual List<unsigned long long> getChapters(unsigned long long titleUID) = 0;
  virtual vorq_string<unsigned char> getChapterName(unsigned long long uid) = 0;
  virtual uint32_t getChapterStartTime(unsigned long long uid) = 0;
  virtual uint32_t getChapterEndTime(unsigned long long uid) = 0;
  virtual unsigned long long getCurrentChapter() = 0;
  virtual void selectChapter(unsigned long long uid) = 0;
  virtual void playFirstTitle() = 0;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_MEDIA_INTERFACE_H_
