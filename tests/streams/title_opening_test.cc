#include <gtest/gtest.h>

#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using Calls = std::vector<std::string>;

// "addStream 13": a call on the n-th stream, whose UID follows the ten chapters'.
std::string Call(const char* name, const OpenedTitle& t, size_t n) {
  return std::string(name) + " " + std::to_string(t.titleUID + 10 + n);
}

// Readers follow the count of tracks, not their places: video readers at 0..n-1,
// one audio reader at 1, whose kind is that track's. The first video and the
// audio reader are enabled.
TEST(TitleOpeningTest, MakesAddsEnablesAndLooksAtTheReaders) {
  const struct {
    std::vector<Track> tracks;
    std::vector<unsigned> types;
  } cases[] = {{{VideoTrack(1)}, {272}},
               {{VideoTrack(1), VideoTrack(2), AudioTrack(3)}, {272, 272, 288}},
               {{AudioTrack(1), VideoTrack(2), AudioTrack(3)}, {272, 288}}};
  for (const auto& c : cases) {
    OpenedTitle t(WriteAv({}, c.tracks), /*openTitle=*/false);
    ASSERT_TRUE(t.ok);
    const std::string out = OutputOf(1, [&] { EXPECT_EQ(t.source->openTitle(t.titleUID), 0); });
    Calls adds, gets, enables = {Call("enableStream", t, 1) + " 1"};
    std::string enumerated;
    for (size_t i = 0; i < c.types.size(); ++i) {
      EXPECT_EQ(t.control.stream(i)->streamType(), c.types[i]);
      adds.push_back(Call("addStream", t, i + 1));
      gets.push_back(Call("getStream", t, i + 1));
      if (c.types[i] == 272) enumerated += "Enumerating video track " + std::to_string(i) + "\n";
    }
    unsigned int kind = 0;
    t.control.stream(c.types.size() - 1)->info(nullptr, nullptr, nullptr, &kind);
    EXPECT_EQ(kind, c.types.size() > 1 ? c.tracks[1].type : 0);
    if (c.types.size() > 1) enables.push_back(Call("enableStream", t, c.types.size()) + " 1");
    adds.insert(adds.end(), enables.begin(), enables.end());
    adds.insert(adds.end(), gets.begin(), gets.end());
    EXPECT_EQ(t.control.calls, adds);
    EXPECT_EQ(out, enumerated);
  }
}

// A refused video stream fails the opening, but closeTitle still removes every
// reader; a kept title, an unknown title or a shut file see nothing.
TEST(TitleOpeningTest, OpenAndCloseGoThroughTheEngine) {
  OpenedTitle t(WriteAv({}), false);
  EXPECT_EQ(t.source->openTitle(t.titleUID + 1), -1);
  t.control.enableResult = -5;
  EXPECT_EQ(t.source->openTitle(t.titleUID), -1);
  EXPECT_EQ(t.control.calls, Calls({Call("addStream", t, 1), Call("addStream", t, 2),
                                    Call("enableStream", t, 1) + " 1"}));
  t.control.calls.clear();
  EXPECT_EQ(t.source->closeTitle(true), 0);
  EXPECT_EQ(t.control.calls, Calls());
  EXPECT_EQ(t.source->closeTitle(false), 0);
  EXPECT_EQ(t.control.calls, Calls({Call("removeStream", t, 1), Call("removeStream", t, 2),
                                    "titleClosed " + std::to_string(t.titleUID)}));
  t.control.calls.clear();
  t.source->close();
  t.source->playFirstTitle();
  EXPECT_EQ(t.source->openTitle(t.titleUID), -1);
  EXPECT_EQ(t.control.calls, Calls());
}

}  // namespace
}  // namespace mkvtest
