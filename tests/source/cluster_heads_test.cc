// The probe's walk over the cluster heads against the parser's Segment::Load,
// which it replaces: the same verdict and the same clusters on every committed
// file and the public corpus, on cut, bit-flipped and unknown-sized copies of
// them, on the fuzz reproducers and on layouts no muxer writes.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "source/cluster_heads.h"
#include "tests/support/memory_reader.h"
#include "tests/support/mkv_writer.h"
#include "tests/support/segment_load_check.h"
#include "tests/support/unknown_sizes.h"

namespace mkvtest {
namespace {

namespace fs = std::filesystem;

// The committed files, and the public corpus when it is beside.
std::vector<Bytes> InputFiles() {
  std::vector<Bytes> files;
  for (const char* dir : {"tests/data", "samples", "tests/fuzz/reproducers", "../shared/corpus"}) {
    const fs::path root = fs::path(MKVSOURCE_SOURCE_DIR) / dir;
    if (!fs::is_directory(root)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      const fs::path& file = entry.path();
      if (file.extension() != ".mkv" && file.extension() != ".webm") continue;
      std::ifstream in(file, std::ios::binary);
      files.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
  }
  return files;
}

Block B(uint64_t track, int16_t time) { return Block{track, time, true, {Payload(3)}}; }

// Clusters without blocks first, between and last; times out of order; none at all.
std::vector<Bytes> WrittenLayouts() {
  std::vector<Bytes> files;
  const std::vector<std::vector<Cluster>> layouts = {
      {Cluster{0, {}}, Cluster{1000, {B(1, 0)}}, Cluster{2000, {}}, Cluster{3000, {B(2, 0)}},
       Cluster{4000, {}}},
      {Cluster{2000, {B(1, 0)}}, Cluster{0, {B(1, 0)}}, Cluster{1000, {B(2, 0)}}},
      {}};
  for (const auto& clusters : layouts)
    files.push_back(Serialize(MkvFile{{VideoTrack(), AudioTrack()}, clusters}));
  return files;
}

// Each file whole, cut at ~400 places, with one byte flipped at as many, and
// all of that again with unknown sizes.
TEST(ClusterHeadsTest, FindsWhatTheParsersLoadFinds) {
  std::vector<Bytes> files = InputFiles();
  ASSERT_GE(files.size(), 16u);
  for (const Bytes& file : WrittenLayouts()) files.push_back(file);
  const size_t whole = files.size();
  for (size_t i = 0; i < whole; ++i) files.push_back(WithUnknownSizes(files[i]));
  size_t inputs = 0, loaded = 0, refused = 0;
  auto check = [&](const Bytes& bytes) {
    const LoadComparison loads = CompareLoads(bytes.data(), bytes.size());
    EXPECT_EQ(loads.difference, "") << "input " << inputs << " of " << bytes.size() << " bytes";
    ++inputs;
    loaded += loads.status == 0;
    refused += loads.status < 0;
  };
  for (const Bytes& file : files) {
    check(file);
    const size_t stride = file.size() / 400 | 1;
    for (size_t at = 0; at < file.size(); at += stride) {
      check(Bytes(file.begin(), file.begin() + at));
      Bytes flipped = file;
      flipped[at] ^= 0xFF;
      check(flipped);
    }
  }
  // Both verdicts, many times over.
  EXPECT_GT(loaded, 10000u);
  EXPECT_GT(refused, 2000u);
  std::printf("%zu inputs from %zu files: %zu loaded, %zu refused\n", inputs, whole, loaded,
              refused);
}

// Cluster times that a binary search may use, and those it may not.
TEST(ClusterHeadsTest, KnowsWhetherTimesAreOrdered) {
  const std::vector<Bytes> layouts = WrittenLayouts();
  const bool ordered[] = {true, false, true};
  for (size_t i = 0; i < layouts.size(); ++i) {
    MemoryReader reader(layouts[i].data(), layouts[i].size());
    reader.Open("");
    mkvparser::EBMLHeader header;
    long long position = 0;
    ASSERT_EQ(header.Parse(&reader, position), 0);
    mkvparser::Segment* segment = nullptr;
    ASSERT_EQ(mkvparser::Segment::CreateInstance(&reader, position, segment), 0);
    KVL::ClusterHeads heads;
    EXPECT_EQ(heads.Load(segment), 0);
    EXPECT_EQ(segment->GetCount(), 0u);  // the segment keeps no cluster
    EXPECT_EQ(heads.ordered(), ordered[i]) << i;
    delete segment;
  }
}

}  // namespace
}  // namespace mkvtest
