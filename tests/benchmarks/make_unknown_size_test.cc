// make_unknown_size on the committed files: only the Segment's and the
// Clusters' size fields change, each to "unknown" of the same length, and
// kvl-play still delivers the frames that ffprobe listed.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "mkvparser/mkvparser.h"
#include "reader/mkv_reader.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_file.h"

namespace {

using mkvtest::Bytes;

Bytes FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

int RunTool(const std::string& in, const std::string& out) {
  const std::string command =
      std::string(MAKE_UNKNOWN_SIZE) + " '" + in + "' '" + out + "' 2>/dev/null";
  return std::system(command.c_str());
}

std::string PacketsOf(const std::string& path) {
  const std::string command = std::string(KVL_PLAY) + " --packets '" + path + "' 2>/dev/null";
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string text;
  char chunk[4096];
  for (size_t got; pipe && (got = std::fread(chunk, 1, sizeof chunk, pipe.get())) > 0;)
    text.append(chunk, got);
  return text;
}

// Where the Segment and its Clusters start in `path`, as the parser finds them.
std::vector<long long> SizedElementStarts(const std::string& path) {
  KVL::MkvReader reader;
  long long position = 0;
  mkvparser::EBMLHeader header;
  mkvparser::Segment* made = nullptr;
  if (reader.Open(path.c_str()) != 0 || header.Parse(&reader, position) != 0 ||
      mkvparser::Segment::CreateInstance(&reader, position, made) != 0)
    return {};
  const std::unique_ptr<mkvparser::Segment> segment(made);
  if (segment->Load() < 0) return {};
  std::vector<long long> starts = {segment->m_element_start};
  for (const mkvparser::Cluster* cluster = segment->GetFirst(); cluster && !cluster->EOS();
       cluster = segment->GetNext(cluster))
    starts.push_back(cluster->m_element_start);
  return starts;
}

// Frame sizes and digests, track by track, from kvl-play's or ffprobe's rows.
using Frames = std::map<std::string, std::vector<std::string>>;
Frames FramesOf(const std::vector<mkvtest::CsvRow>& rows, size_t track, size_t size) {
  Frames frames;
  for (const mkvtest::CsvRow& row : rows)
    frames[row.at(track)].push_back(row.at(size) + " " + row.at(size + 1));
  return frames;
}

class UnknownSizeCopy : public testing::TestWithParam<const char*> {};

TEST_P(UnknownSizeCopy, ChangesOnlyTheSizesAndKeepsEveryFrame) {
  const std::string original = mkvtest::MediaPath(GetParam());
  const std::string copy = mkvtest::NewTempPath();
  ASSERT_EQ(0, RunTool(original, copy));
  const Bytes before = FileBytes(original), after = FileBytes(copy);
  ASSERT_EQ(before.size(), after.size());

  const std::vector<long long> starts = SizedElementStarts(original);
  ASSERT_GT(starts.size(), 2u);
  std::vector<bool> rewritten(before.size());
  for (const long long start : starts) {
    // Segment and Cluster ids are four bytes; the size's length is in its first byte.
    const size_t at = static_cast<size_t>(start) + 4;
    int length = 1;
    while (length < 8 && !(before[at] & (0x80 >> (length - 1)))) ++length;
    EXPECT_EQ(0xFF >> (length - 1), after[at]) << "element at " << start;
    for (int i = 0; i < length; ++i) rewritten[at + i] = true;
    for (int i = 1; i < length; ++i) EXPECT_EQ(0xFF, after[at + i]) << "element at " << start;
  }
  for (size_t i = 0; i < before.size(); ++i) {
    if (rewritten[i]) continue;
    ASSERT_EQ(before[i], after[i]) << "byte " << i;
  }

  enum { kTrack = 2, kSize = 5 };
  EXPECT_EQ(FramesOf(mkvtest::ReadFacts(GetParam(), "packets"), 0, 2),
            FramesOf(mkvtest::CsvRows(PacketsOf(copy)), kTrack, kSize));
}

INSTANTIATE_TEST_SUITE_P(CommittedFiles, UnknownSizeCopy,
                         testing::Values("h264_aac", "h264_mp3_laced", "h264_aac_scale100us",
                                         "hevc_mp3", "sample"));

// What has no end by its sizes is refused, and nothing is written.
TEST(UnknownSizeCopy, RefusesWhatItCannotWalk) {
  const std::string copy = mkvtest::NewTempPath();
  ASSERT_EQ(0, RunTool(mkvtest::MediaPath("h264_aac"), copy));
  for (const std::string& in : {copy, mkvtest::WriteTemp({'n', 'o', 't', '\n'}),
                                std::string("/nonexistent/in.mkv"),
                                testing::TempDir()}) {
    const std::string out = mkvtest::NewTempPath();
    EXPECT_NE(0, RunTool(in, out)) << in;
    EXPECT_FALSE(std::ifstream(out).good()) << in;
  }
}

}  // namespace
