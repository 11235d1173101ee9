#include "source/automatic_chapters.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

// Starts taken down, ends taken up; the largest duration doesn't overflow.
TEST(AutomaticChapters, CutTheDurationIntoTenths) {
  const struct {
    int64_t duration;
    std::vector<int64_t> starts, ends;
  } cases[] = {{7, {0, 0, 1, 2, 2, 3, 4, 4, 5, 6}, {1, 2, 3, 3, 4, 5, 5, 6, 7, 7}},
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
  // Opens a file whose Duration is `nanoseconds` at a scale of 1 ns, or none;
  // notes its chapters' UIDs and what the opening wrote.
  void OpenLasting(std::optional<double> nanoseconds) {
    const MkvFile file{{VideoTrack()}, {}, 1, nanoseconds};
    lines = OutputOf(1, [&] { ASSERT_TRUE(Open(WriteMkv(file), false)); });
    const KVL::List<unsigned long long> list = source->getChapters(titleUID);
    for (auto* node = list.head(); node; node = node->next) chapters.push_back(node->value);
  }
  std::string lines;
  std::vector<unsigned long long> chapters;
};

// UIDs come in the order title, chapter 0 to 9; times go to the engine in
// its 10 us unit; a chapter lasting to the duration's end is none.
TEST_F(ChaptersTest, PublishedInUidOrderWithEngineTimes) {
  OpenLasting(1000000000.0);
  EXPECT_EQ(1u, titleUID);
  EXPECT_EQ((std::vector<unsigned long long>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11}), chapters);
  EXPECT_EQ(10u, source->getChapters(0).count());
  EXPECT_EQ(0u, source->getChapters(999).count());
  EXPECT_EQ(0, lines.find("AutoChapter start: 0 end: 100000000\n"));
  const struct {
    unsigned long long uid;
    uint32_t start, end;
  } times[] = {{chapters[0], 0, 10000}, {chapters[9], 90000, 100000}, {999, ~0u, ~0u}};
  for (const auto& t : times) {
    EXPECT_EQ(t.start, source->getChapterStartTime(t.uid));
    EXPECT_EQ(t.end, source->getChapterEndTime(t.uid));
  }
  EXPECT_EQ(0u, source->getChapterName(chapters[0]).length() + source->getTitleName(999).length() +
                source->getChapterName(999).length() + source->getTitleName(titleUID).length());
  EXPECT_EQ("couldn't find title UID.\n",
            OutputOf(1, [&] { EXPECT_EQ(0u, source->getCurrentChapter()); }));
  source->selectChapter(chapters[3]);  // no title open: no seek
  OutputOf(1, [&] { ASSERT_EQ(0, source->openTitle(titleUID)); });
  control.calls.clear();
  source->selectChapter(999);
  source->selectChapter(chapters[3]);
  EXPECT_EQ(std::vector<std::string>{"seekToTime 30000 1"}, control.calls);
  const struct {
    int32_t time;
    unsigned long long chapter;
  } current[] = {{25000, chapters[2]}, {99999, chapters[9]}, {100000, 0}};
  for (const auto& c : current) {
    control.currentTime = c.time;
    const std::string out = OutputOf(1, [&] { EXPECT_EQ(c.chapter, source->getCurrentChapter()); });
    EXPECT_EQ(c.chapter ? "" : "couldn't find chapter by time.\n", out);
  }
}

// Without Duration every chapter runs from 0 to -1, with a Duration of 0 from 0 to 0;
// 2^63 ns, which no signed 64-bit count holds, counts as the largest.
TEST_F(ChaptersTest, TheFirstChapterAtTheEdgesOfDuration) {
  const std::pair<std::optional<double>, const char*> cases[] = {
      {std::nullopt, "18446744073709551615"}, {0.0, "0"}, {0x1p63, "922337203685477581"}};
  for (const auto& [nanoseconds, end] : cases) {
    OpenLasting(nanoseconds);
    EXPECT_EQ(0u, lines.find("AutoChapter start: 0 end: " + std::string(end) + "\n"));
    source->close();
  }
}

}  // namespace
}  // namespace mkvtest
