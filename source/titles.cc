#include <algorithm>

#include "plugin/mkv_source.h"
#include "source/title_info.h"

namespace KVL {

List<unsigned long long> MKVSource::getTitles() {
  List<unsigned long long> uids;
  for (const auto& title : titles) {
    if (!title.second->hidden) uids.append(title.first);
  }
  return uids;
}

vorq_string<unsigned char> MKVSource::getTitleName(unsigned long long uid) {
  const auto found = titles.find(uid);
  if (found == titles.end()) return vorq_string<unsigned char>();
  return vorq_string<unsigned char>(found->second->name.c_str());
}

// The track languages stay what the readers set.
void MKVSource::setDefaultAudioLanguage(std::string) {}
void MKVSource::setDefaultSubtitleLanguage(std::string) {}

}  // namespace KVL
