#include <algorithm>

#include "source/automatic_chapters.h"
#include "source/chapter_info.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

std::vector<unsigned long long> Uids(const KVL::List<unsigned long long>& list) {
  std::vector<unsigned long long> uids;
  for (auto* node = list.head(); node; node = node->next) uids.push_back(node->value);
  return uids;
}

// A video file whose Duration is `nanoseconds` at a scale of 1 ns, or none.
MkvFile FileLasting(std::optional<double> nanoseconds) {
  MkvFile file = VideoAndAudioFile();
  file.info.timecode_scale = 1;
  file.info.duration = nanoseconds;
  return file;
}

struct ChapterCase {
  int64_t duration;
  std::vector<int64_t> starts;
  std::vector<int64_t> ends;
};

TEST(AutomaticChapters, CutTheDurationIntoTenths) {
  const ChapterCase cases[] = {
      {100, {0, 10, 20, 30, 40, 50, 60, 70, 80, 90}, {10, 20, 30, 40, 50, 60, 70, 80, 90, 100}},
      {7, {0, 0, 1, 2, 2, 3, 4, 4, 5, 6}, {1, 2, 3, 3, 4, 5, 5, 6, 7, 7}},
      {-1, std::vector<int64_t>(10, 0), std::vector<int64_t>(10, -1)},
      {INT64_MAX, {}, {}},
  };
  for (const ChapterCase& c : cases) {
    for (uint32_t i = 0; i < KVL::kAutomaticChapterCount; ++i) {
      const int64_t start = KVL::AutomaticChapterStart(c.duration, i);
      const int64_t end = KVL::AutomaticChapterEnd(c.duration, i);
      if (!c.starts.empty()) {
        EXPECT_EQ(c.starts[i], start) << c.duration << " chapter " << i;
        EXPECT_EQ(c.ends[i], end) << c.duration << " chapter " << i;
      }
      if (c.duration >= 0) {
        EXPECT_LE(start, end);
      }
    }
    EXPECT_EQ(c.duration, KVL::AutomaticChapterEnd(c.duration, 9));
  }
}

class ChaptersTest : public SourceTest {
 protected:
  void OpenLasting(std::optional<double> nanoseconds) {
    testing::internal::CaptureStdout();
    ASSERT_TRUE(Open(WriteTemp(FileLasting(nanoseconds)), false));
    lines = testing::internal::GetCapturedStdout();
    title = source->getTitles().head()->value;
    chapters = Uids(source->getChapters(title));
  }
  std::string lines;
  unsigned long long title = 0;
  std::vector<unsigned long long> chapters;
};

// UIDs come in the order title, chapter 0 to 9; times go to the engine in
// its 10 us unit.
TEST_F(ChaptersTest, PublishedInUidOrderWithEngineTimes) {
  OpenLasting(1000000000.0);
  EXPECT_EQ(1u, title);
  EXPECT_EQ((std::vector<unsigned long long>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11}), chapters);
  EXPECT_EQ(chapters, Uids(source->getChapters(0)));
  EXPECT_TRUE(Uids(source->getChapters(999)).empty());
  EXPECT_EQ(0u, source->getTitleName(title).length());
  EXPECT_EQ(0u, source->getChapterName(chapters[0]).length());
  EXPECT_EQ(0u, source->getChapterName(12345).length());
  EXPECT_EQ(0, lines.find("AutoChapter start: 0 end: 100000000\n"));
  EXPECT_EQ(0u, source->getChapterStartTime(chapters[0]));
  EXPECT_EQ(10000u, source->getChapterEndTime(chapters[0]));
  EXPECT_EQ(90000u, source->getChapterStartTime(chapters[9]));
  EXPECT_EQ(100000u, source->getChapterEndTime(chapters[9]));
  EXPECT_EQ(0xFFFFFFFFu, source->getChapterStartTime(999));
  EXPECT_EQ(0xFFFFFFFFu, source->getChapterEndTime(999));
}

// Without Duration every chapter runs from 0 to -1, and selecting one
// jumps to 0.
TEST_F(ChaptersTest, WithoutDurationChaptersRunFromZeroToMinusOne) {
  OpenLasting(std::nullopt);
  for (unsigned long long uid : chapters) {
    EXPECT_EQ(0u, source->getChapterStartTime(uid));
    EXPECT_EQ(0u, source->getChapterEndTime(uid));
  }
  EXPECT_NE(std::string::npos, lines.find("AutoChapter start: 0 end: 18446744073709551615\n"));
  StdoutOf([&] { ASSERT_EQ(0, source->openTitle(title)); });
  source->selectChapter(chapters[5]);
  EXPECT_EQ(std::vector<uint32_t>{0}, control.seekTimes);
}

TEST_F(ChaptersTest, CurrentChapterNeedsAnOpenTitle) {
  OpenLasting(1000000000.0);
  testing::internal::CaptureStdout();
  EXPECT_EQ(0u, source->getCurrentChapter());
  EXPECT_EQ("couldn't find title UID.\n", testing::internal::GetCapturedStdout());

  StdoutOf([&] { ASSERT_EQ(0, source->openTitle(title)); });
  control.currentTime = 25000;  // 250 ms
  EXPECT_EQ(chapters[2], source->getCurrentChapter());
  control.currentTime = 99999;
  EXPECT_EQ(chapters[9], source->getCurrentChapter());
  control.currentTime = 100000;  // the duration lies in no chapter
  testing::internal::CaptureStdout();
  EXPECT_EQ(0u, source->getCurrentChapter());
  EXPECT_EQ("couldn't find chapter by time.\n", testing::internal::GetCapturedStdout());
}

TEST_F(ChaptersTest, SelectingAChapterSeeksTheOpenTitle) {
  OpenLasting(1000000000.0);
  source->selectChapter(chapters[3]);
  EXPECT_TRUE(control.seekTimes.empty());
  StdoutOf([&] { ASSERT_EQ(0, source->openTitle(title)); });
  source->selectChapter(999);
  source->selectChapter(chapters[3]);
  EXPECT_EQ(std::vector<uint32_t>{30000}, control.seekTimes);
  EXPECT_EQ("seekToTime 30000 1", control.calls.back());
}

TEST_F(ChaptersTest, AChapterRecordOnRequestBelongsToNoMap) {
  OpenLasting(100.0);
  std::unique_ptr<KVL::MKVSource::ChapterInfo> made(source->_getChapterInfo(title, 77, 4));
  EXPECT_EQ(4u, made->index);
  EXPECT_EQ(title, made->titleUID);
  EXPECT_EQ(-1, made->spare);
  EXPECT_EQ(-1, made->startTime);
  EXPECT_EQ(10u, source->getChapters(0).count());
}

}  // namespace
}  // namespace mkvtest
