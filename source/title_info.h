#ifndef SOURCE_TITLE_INFO_H_
#define SOURCE_TITLE_INFO_H_

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "plugin/mkv_source.h"

namespace KVL {

// A published title. Its chapter map shares the records of the source's
// chapter map, which owns them.
struct MKVSource::TitleInfo {
  std::basic_string<unsigned char> name;
  uint32_t index = 0;
  bool hidden = false;
  std::map<unsigned long long, ChapterInfo*> chapters;
};

// True for the title whose index is the one held.
struct MatchTitleInfoByIndex {
  explicit MatchTitleInfoByIndex(uint32_t index) : index(index) {}
  bool operator()(const std::pair<const unsigned long long, MKVSource::TitleInfo*>& entry) const {
    return entry.second->index == index;
  }
  uint32_t index;
};

}  // namespace KVL

#endif  // SOURCE_TITLE_INFO_H_
