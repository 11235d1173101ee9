#ifndef SOURCE_CHAPTER_INFO_H_
#define SOURCE_CHAPTER_INFO_H_

#include <cstdint>
#include <string>
#include <utility>

#include "plugin/mkv_source.h"

namespace KVL {

// One chapter; times are nanoseconds, the end excluded.
struct MKVSource::ChapterInfo {
  std::basic_string<unsigned char> name;
  uint32_t index = 0;
  int32_t spare = -1;
  unsigned long long titleUID = 0;
  int64_t startTime = -1;
  int64_t endTime = -1;
};

// True for a chapter of the title held whose interval holds the time.
struct MatchChapterInfoByTime {
  MatchChapterInfoByTime(unsigned long long titleUID, int64_t time)
      : titleUID(titleUID), time(time) {}
  bool operator()(const std::pair<const unsigned long long, MKVSource::ChapterInfo*>& entry) const {
    const MKVSource::ChapterInfo& chapter = *entry.second;
    return chapter.titleUID == titleUID && chapter.startTime <= time && time < chapter.endTime;
  }
  unsigned long long titleUID;
  int64_t time;
};

}  // namespace KVL

#endif  // SOURCE_CHAPTER_INFO_H_
