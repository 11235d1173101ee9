#include <cstdio>
#include <memory>

#include "plugin/kvl/control_interface.h"
#include "plugin/mkv_source.h"
#include "source/automatic_chapters.h"
#include "source/chapter_info.h"
#include "source/title_info.h"
#include "streams/title_internal.h"

namespace KVL {

bool MKVSource::loadInternal() {
  if (!videoTracks.empty()) {
    const unsigned long long titleUID = control->createUID();
    std::unique_ptr<TitleInfo> title(new TitleInfo);
    for (uint32_t i = 0; i < kAutomaticChapterCount; ++i) {
      std::unique_ptr<ChapterInfo> record(new ChapterInfo);
      ChapterInfo* chapter = record.get();
      chapter->index = i;
      chapter->titleUID = titleUID;
      chapter->startTime = AutomaticChapterStart(segmentDuration, i);
      chapter->endTime = AutomaticChapterEnd(segmentDuration, i);
      const unsigned long long uid = control->createUID();
      chapters[uid] = record.release();
      title->chapters[uid] = chapter;
      std::printf("AutoChapter start: %llu end: %llu\n",
                  static_cast<unsigned long long>(chapter->startTime),
                  static_cast<unsigned long long>(chapter->endTime));
    }
    titles[titleUID] = title.release();
  }
  // Asked on every load; the plug-in has no use for the answers.
  control->getDefaultAudioLanguage();
  control->getDefaultSubtitleLanguage();
  mainTitle->loaded = true;
  return true;
}

bool MKVSource::unloadInternal() {
  mainTitle->loaded = false;
  return true;
}

MKVSource::TitleInternal* MKVSource::loadAuxillaryTitle(short key) {
  auto found = auxiliaryTitles.find(key);
  if (found == auxiliaryTitles.end()) {
    std::unique_ptr<TitleInternal> record(new TitleInternal(this));
    found = auxiliaryTitles.emplace(key, record.get()).first;
    record.release();
  }
  ++found->second->references;
  return found->second;
}

void MKVSource::unloadAuxillaryTitle(short key) {
  const auto found = auxiliaryTitles.find(key);
  if (found == auxiliaryTitles.end()) return;
  TitleInternal* record = found->second;
  if (--record->references == 0) record->loaded = false;
}

}  // namespace KVL
