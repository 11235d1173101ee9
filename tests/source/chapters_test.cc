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

// Starts taken down, ends taken up; an unknown duration (-1) gives 0 to -1,
// and the largest one doesn't overflow.
TEST(AutomaticChapters, CutTheDurationIntoTenths) {
  const struct {
    int64_t duration;
    std::vector<int64_t> starts, ends;
  } cases[] = {{7, {0, 0, 1, 2, 2, 3, 4, 4, 5, 6}, {1, 2, 3, 3, 4, 5, 5, 6, 7, 7}},
               {-1, std::vector<int64_t>(10, 0), std::vector<int64_t>(10, -1)},
               {INT64_MAX, {0, INT64_MAX / 10}, {INT64_MAX / 10 + 1}}};
  for (const auto& c : cases) {
    for (uint32_t i = 0; i < c.starts.size(); ++i) {
      EXPECT_EQ(c.starts[i], KVL::AutomaticChapterStart(c.duration, i)) << c.duration << " " << i;
    }
    for (uint32_t i = 0; i < c.ends.size(); ++i) {
      EXPECT_EQ(c.ends[i], KVL::AutomaticChapterEnd(c.duration, i)) << c.duration << " " << i;
    }
    EXPECT_EQ(c.duration, KVL::AutomaticChapterEnd(c.duration, 9));
  }
}

class ChaptersTest : public SourceTest {
 protected:
  // Opens a file whose Duration is `nanoseconds` at a scale of 1 ns, or none.
  void OpenLasting(std::optional<double> nanoseconds) {
    const MkvFile file{
        {VideoTrack()}, {Cluster{0, {Block{1, 0, true, {Payload(8)}}}}}, 1, nanoseconds};
    lines = OutputOf(1, [&] { ASSERT_TRUE(Open(WriteMkv(file), false)); });
    chapters = Uids(source->getChapters(titleUID));
  }
  void OpenTitle() {
    OutputOf(1, [&] { ASSERT_EQ(0, source->openTitle(titleUID)); });
    control.calls.clear();
  }
  std::string lines;
  std::vector<unsigned long long> chapters;
};

// UIDs come in the order title, chapter 0 to 9; times go to the engine in
// its 10 us unit.
TEST_F(ChaptersTest, PublishedInUidOrderWithEngineTimes) {
  OpenLasting(1000000000.0);
  EXPECT_EQ(1u, titleUID);
  EXPECT_EQ((std::vector<unsigned long long>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11}), chapters);
  EXPECT_EQ(chapters, Uids(source->getChapters(0)));
  EXPECT_TRUE(Uids(source->getChapters(999)).empty());
  EXPECT_EQ(0u, source->getTitleName(titleUID).length() + source->getTitleName(999).length());
  EXPECT_EQ(0u,
            source->getChapterName(chapters[0]).length() + source->getChapterName(999).length());
  EXPECT_EQ(0, lines.find("AutoChapter start: 0 end: 100000000\n"));
  EXPECT_EQ(0u, source->getChapterStartTime(chapters[0]));
  EXPECT_EQ(10000u, source->getChapterEndTime(chapters[0]));
  EXPECT_EQ(90000u, source->getChapterStartTime(chapters[9]));
  EXPECT_EQ(100000u, source->getChapterEndTime(chapters[9]));
  EXPECT_EQ(0xFFFFFFFFu, source->getChapterStartTime(999));
  EXPECT_EQ(0xFFFFFFFFu, source->getChapterEndTime(999));
  // A record made on request belongs to no map.
  std::unique_ptr<KVL::MKVSource::ChapterInfo> made(source->_getChapterInfo(titleUID, 77, 4));
  EXPECT_EQ(4u, made->index);
  EXPECT_EQ(titleUID, made->titleUID);
  EXPECT_EQ(10u, source->getChapters(0).count());
}

// Without Duration every chapter runs from 0 to -1, and selecting one
// jumps to 0.
TEST_F(ChaptersTest, WithoutDurationChaptersRunFromZeroToMinusOne) {
  OpenLasting(std::nullopt);
  for (unsigned long long uid : chapters) {
    EXPECT_EQ(0u, source->getChapterStartTime(uid) + source->getChapterEndTime(uid));
  }
  EXPECT_NE(std::string::npos, lines.find("AutoChapter start: 0 end: 18446744073709551615\n"));
  OpenTitle();
  source->selectChapter(chapters[5]);
  EXPECT_EQ(std::vector<std::string>{"seekToTime 0 1"}, control.calls);
}

TEST_F(ChaptersTest, CurrentChapterNeedsAnOpenTitle) {
  OpenLasting(1000000000.0);
  EXPECT_EQ("couldn't find title UID.\n",
            OutputOf(1, [&] { EXPECT_EQ(0u, source->getCurrentChapter()); }));
  OpenTitle();
  control.currentTime = 25000;  // 250 ms
  EXPECT_EQ(chapters[2], source->getCurrentChapter());
  control.currentTime = 99999;
  EXPECT_EQ(chapters[9], source->getCurrentChapter());
  control.currentTime = 100000;  // the duration lies in no chapter
  EXPECT_EQ("couldn't find chapter by time.\n",
            OutputOf(1, [&] { EXPECT_EQ(0u, source->getCurrentChapter()); }));
}

TEST_F(ChaptersTest, SelectingAChapterSeeksTheOpenTitle) {
  OpenLasting(1000000000.0);
  source->selectChapter(chapters[3]);
  EXPECT_TRUE(control.calls.empty());
  OpenTitle();
  source->selectChapter(999);
  source->selectChapter(chapters[3]);
  EXPECT_EQ(std::vector<std::string>{"seekToTime 30000 1"}, control.calls);
}

}  // namespace
}  // namespace mkvtest
