#include "tests/support/segment_load_check.h"

#include <memory>
#include <sstream>
#include <vector>

#include "source/cluster_heads.h"
#include "tests/support/memory_reader.h"

namespace mkvtest {
namespace {

struct Loaded {
  long status;
  std::vector<KVL::ClusterHeads::Head> clusters;
};

Loaded ByTheParser(mkvparser::Segment* segment) {
  Loaded loaded{segment->Load(), {}};
  for (const mkvparser::Cluster* cluster = segment->GetFirst(); cluster && !cluster->EOS();
       cluster = segment->GetNext(cluster))
    loaded.clusters.push_back({cluster->GetPosition(), cluster->GetTimeCode()});
  return loaded;
}

Loaded ByTheHeads(mkvparser::Segment* segment) {
  KVL::ClusterHeads heads;
  Loaded loaded{heads.Load(segment), {}};
  for (size_t i = 0; i < heads.size(); ++i) loaded.clusters.push_back(heads[i]);
  return loaded;
}

std::string Describe(const Loaded& loaded) {
  std::ostringstream text;
  text << "status " << loaded.status << ", clusters";
  for (const auto& head : loaded.clusters) text << ' ' << head.position << '@' << head.timecode;
  return text.str();
}

}  // namespace

LoadComparison CompareLoads(const uint8_t* data, size_t size) {
  MemoryReader reader(data, size);
  reader.Open("");
  mkvparser::EBMLHeader header;
  long long position = 0;
  if (header.Parse(&reader, position) != 0) return {1, ""};
  mkvparser::Segment* made = nullptr;
  if (mkvparser::Segment::CreateInstance(&reader, position, made) != 0) return {1, ""};
  const std::unique_ptr<mkvparser::Segment> parsers(made);
  if (mkvparser::Segment::CreateInstance(&reader, position, made) != 0) return {1, "made once"};
  const std::unique_ptr<mkvparser::Segment> ours(made);
  const Loaded loaded = ByTheParser(parsers.get());
  const std::string expected = Describe(loaded);
  const std::string got = Describe(ByTheHeads(ours.get()));
  return {loaded.status, got == expected ? "" : "Load: " + expected + "\nheads: " + got};
}

}  // namespace mkvtest
