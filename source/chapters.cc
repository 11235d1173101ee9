#include <algorithm>
#include <cstdio>

#include <boost/thread/locks.hpp>

#include "plugin/kvl/control_interface.h"
#include "plugin/mkv_source.h"
#include "source/chapter_info.h"
#include "source/title_info.h"
#include "streams/title_internal.h"

namespace KVL {
namespace {

// Nanoseconds to the engine's 10 microsecond unit, low 32 bits.
uint32_t ToEngineTime(int64_t nanoseconds) {
  return static_cast<uint32_t>(nanoseconds / 10000);
}

constexpr uint32_t kUnknownChapterTime = 0xFFFFFFFF;

}  // namespace

List<unsigned long long> MKVSource::getChapters(unsigned long long titleUID) {
  List<unsigned long long> uids;
  const std::map<unsigned long long, ChapterInfo*>* source = &chapters;
  if (titleUID != 0) {
    const auto title = titles.find(titleUID);
    if (title == titles.end()) return uids;
    source = &title->second->chapters;
  }
  for (const auto& chapter : *source) uids.append(chapter.first);
  return uids;
}

vorq_string<unsigned char> MKVSource::getChapterName(unsigned long long uid) {
  const auto found = chapters.find(uid);
  if (found == chapters.end()) return vorq_string<unsigned char>();
  return vorq_string<unsigned char>(found->second->name.c_str());
}

uint32_t MKVSource::getChapterStartTime(unsigned long long uid) {
  const auto found = chapters.find(uid);
  return found == chapters.end() ? kUnknownChapterTime : ToEngineTime(found->second->startTime);
}

uint32_t MKVSource::getChapterEndTime(unsigned long long uid) {
  const auto found = chapters.find(uid);
  return found == chapters.end() ? kUnknownChapterTime : ToEngineTime(found->second->endTime);
}

unsigned long long MKVSource::getCurrentChapter() {
  // Without the engine's control object there is no playing position.
  if (!control) return 0;
  const int32_t position = control->getCurrentTime(0);
  const auto title = std::find_if(titles.begin(), titles.end(),
                                  MatchTitleInfoByIndex(mainTitle->titleIndex));
  if (title == titles.end()) {
    std::puts("couldn't find title UID.");
    return 0;
  }
  const int64_t time = static_cast<int64_t>(position) * 10000;
  const auto chapter = std::find_if(chapters.begin(), chapters.end(),
                                    MatchChapterInfoByTime(title->first, time));
  if (chapter == chapters.end()) {
    std::puts("couldn't find chapter by time.");
    return 0;
  }
  return chapter->first;
}

void MKVSource::selectChapter(unsigned long long uid) {
  const auto chapter = chapters.find(uid);
  if (chapter == chapters.end() || !control) return;
  const auto title = titles.find(chapter->second->titleUID);
  if (title == titles.end()) return;
  if (static_cast<int32_t>(title->second->index) != mainTitle->titleIndex) return;
  if (chapter->second->startTime < 0) return;
  control->seekToTime(ToEngineTime(chapter->second->startTime), SeekRequest{1, 0});
}

MKVSource::ChapterInfo* MKVSource::_getChapterInfo(unsigned long long titleUID, unsigned int,
                                                   unsigned int index) {
  boost::unique_lock<boost::recursive_mutex> lock(mainTitle->mutex);
  auto* chapter = new ChapterInfo;
  chapter->index = index;
  chapter->titleUID = titleUID;
  return chapter;
}

}  // namespace KVL
