// The concurrency run's rules, then committed files at fixed seeds, bounded in calls and time.
#include <gtest/gtest.h>

#include "host/engine_side/loaded_engine.h"
#include "host/play/source_uri.h"
#include "host/stress/stress_rules.h"
#include "host/stress/stress_run.h"
#include "tests/support/media_files.h"

namespace kvlhost {
namespace {

// Events on one stream of frames A B C stored in time order: 'A'..'C' a
// chunk (sequential), 's' a seek, 'f' a failed seek, 'e' the end, 'x' the
// end once the title may be closing.
TEST(StressRules, ChunksFollowTheReferenceBetweenSeeks) {
  const std::vector<FrameKey> frames = {{0, 1, 10}, {20, 1, 11}, {40, 1, 12}};
  const struct {
    const char* events;
    size_t broken;
  } cases[] = {
      {"ABCe", 0}, {"ABsBCe", 0}, {"sBCe", 0}, {"se", 0},    {"fCe", 0},    {"Ax", 0},
      {"ACe", 1},  {"ABBCe", 1},  {"Ae", 1},   {"ABCsAe", 1}, {"sCBCe", 2},  // back in time too
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.events);
    BrokenRules broken;
    StreamRules rules(0, frames, broken);
    for (const char* event = c.events; *event; ++event) {
      if (*event == 's' || *event == 'f') rules.OnSeek(*event == 's');
      if (*event == 'e' || *event == 'x') rules.OnEnd(*event == 'x');
      if (*event >= 'A' && *event <= 'C') rules.OnChunk(frames[*event - 'A'], true);
    }
    EXPECT_EQ(broken.count(), c.broken);
  }
}

TEST(StressRun, CommittedFilesKeepEveryRule) {
  const char* const media[] = {"sample", "h264_mp3_laced", "h264_aac_scale100us", "hevc_mp3",
                               "mpeg4_aac"};
  for (size_t i = 0; i < std::size(media); ++i) {
    SCOPED_TRACE(media[i]);
    LoadedEngine engine(MKVSOURCE_MODULE_PATH, {});
    const StressPlan plan{SourceUri(mkvtest::MediaPath(media[i])), i + 1, 120, 400};
    PlayReport report;
    StressSummary summary;
    EXPECT_EQ(RunStress(engine.module(), engine.control(), plan, report, summary), kPlayed)
        << SummaryLine(plan, summary);
    EXPECT_GT(summary.seeks, 0u);
    EXPECT_GT(summary.lines.seek, 0u);
  }
}

}  // namespace
}  // namespace kvlhost
