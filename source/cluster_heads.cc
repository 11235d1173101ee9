#include "source/cluster_heads.h"

#include <memory>

namespace KVL {
namespace {

using mkvparser::E_BUFFER_NOT_FULL;
using mkvparser::E_FILE_FORMAT_INVALID;
using mkvparser::E_PARSE_FAILED;

constexpr long long kClusterId = 0x1F43B675;

// DoLoadCluster's results besides a status.
constexpr long kFoundCluster = 0;
constexpr long kNoMoreClusters = 1;
constexpr long kGoOn = 2;

// The steps of Segment::Load after its headers, on the segment's public
// members: what its DoLoadCluster and DoLoadClusterUnknownSize do, each
// check in the same order with the same status. The branch for clusters
// preloaded from the Cues is left out: a segment just made has none. Unlike
// Load, a Cues element behind the clusters isn't handed to the segment;
// nothing here reads the Cues.
class HeadWalk {
 public:
  HeadWalk(mkvparser::Segment* segment, long long start, std::vector<ClusterHeads::Head>* heads)
      : segment_(segment), reader_(segment->m_pReader), next_(start), heads_(heads) {}

  // As DoLoadCluster: kFoundCluster, kNoMoreClusters, kGoOn or a status.
  long Step() { return unknownSize_ ? StepInUnknownSize() : StepToCluster(); }

 private:
  long StepToCluster() {
    long long total, avail;
    const long status = reader_->Length(&total, &avail);
    if (status < 0) return status;
    if (total >= 0 && avail > total) return E_FILE_FORMAT_INVALID;
    const long long stop = SegmentStop();
    long long pos;
    long len;
    long long size, idpos;
    bool sized;
    for (;;) {
      if (total >= 0 && next_ >= total) return kNoMoreClusters;
      if (stop >= 0 && next_ >= stop) return kNoMoreClusters;
      pos = next_;
      idpos = pos;
      const long idStatus = ReadField(pos, len, avail, stop);
      if (idStatus < 0) return idStatus;
      const long long id = mkvparser::ReadID(reader_, idpos, len);
      if (id < 0) return E_FILE_FORMAT_INVALID;
      pos += len;
      const long sizeStatus = ReadField(pos, len, avail, stop);
      if (sizeStatus < 0) return sizeStatus;
      size = mkvparser::ReadUInt(reader_, pos, len);
      if (size < 0) return static_cast<long>(size);
      pos += len;
      if (size == 0) {
        next_ = pos;
        continue;
      }
      sized = size != (1LL << (7 * len)) - 1;
      if (stop >= 0 && sized && pos + size > stop) return E_FILE_FORMAT_INVALID;
      if (id == kClusterId) break;
      // Of the rest, only clusters may be of unknown size: Cues neither.
      if (!sized) return E_FILE_FORMAT_INVALID;
      next_ = pos + size;
    }
    const long long offset = idpos - segment_->m_start;
    long long entryPos;
    long entryLen;
    const long entries = mkvparser::Cluster::HasBlockEntries(segment_, offset, entryPos, entryLen);
    if (entries < 0) return entries;
    if (entries == 0) return PassEmpty(sized ? pos + size : pos, total, stop);
    return Found(offset, sized ? pos + size : -1, stop);
  }

  // A cluster without blocks is passed over; an unknown-sized one from its payload on.
  long PassEmpty(long long pos, long long total, long long stop) {
    if (total >= 0 && pos >= total) {
      next_ = total;
      return kNoMoreClusters;
    }
    if (stop >= 0 && pos >= stop) {
      next_ = stop;
      return kNoMoreClusters;
    }
    next_ = pos;
    return kGoOn;
  }

  // Records the cluster at `offset`; `end` is where its element ends, or -1
  // when its size is unknown and its blocks must be parsed to find that.
  long Found(long long offset, long long end, long long stop) {
    std::unique_ptr<mkvparser::Cluster> cluster(
        mkvparser::Cluster::Create(segment_, static_cast<long>(heads_->size()), offset));
    if (!cluster) return E_PARSE_FAILED;
    heads_->push_back(ClusterHeads::Head{offset, cluster->GetTimeCode()});
    if (end < 0) {
      unknownSize_ = std::move(cluster);
      return kFoundCluster;
    }
    next_ = end;
    if (stop > 0 && next_ > stop) return E_FILE_FORMAT_INVALID;
    return kFoundCluster;
  }

  // One more block of the unknown-sized cluster; its end once it has none.
  long StepInUnknownSize() {
    long long pos;
    long len;
    const long status = unknownSize_->Parse(pos, len);
    if (status < 0) return status;
    if (status == 0) return kGoOn;
    const long long size = unknownSize_->GetElementSize();
    if (size < 0) return E_FILE_FORMAT_INVALID;
    next_ = unknownSize_->m_element_start + size;
    unknownSize_.reset();
    return kGoOn;
  }

  // Checks the length of the ID or size field at `pos` and puts it in `len`.
  long ReadField(long long pos, long& len, long long avail, long long stop) const {
    if (pos + 1 > avail) return E_BUFFER_NOT_FULL;
    const long long result = mkvparser::GetUIntLength(reader_, pos, len);
    if (result < 0) return static_cast<long>(result);
    if (result > 0) return E_BUFFER_NOT_FULL;
    if (stop >= 0 && pos + len > stop) return E_FILE_FORMAT_INVALID;
    if (pos + len > avail) return E_BUFFER_NOT_FULL;
    return 0;
  }

  long long SegmentStop() const {
    return segment_->m_size < 0 ? -1 : segment_->m_start + segment_->m_size;
  }

  mkvparser::Segment* segment_;
  mkvparser::IMkvReader* reader_;
  long long next_;  // where the next element starts
  std::vector<ClusterHeads::Head>* heads_;
  std::unique_ptr<mkvparser::Cluster> unknownSize_;  // thrown away once its end is known
};

// Where ParseHeaders stopped: the first cluster, or the end of the segment or
// the file. It keeps that to itself, so its walk over the level-1 elements is
// taken again; having succeeded, it read all of these before.
long long HeadersEnd(const mkvparser::Segment& segment) {
  long long total, avail;
  if (segment.m_pReader->Length(&total, &avail) < 0) return -1;
  const long long stop = segment.m_size < 0 ? -1 : segment.m_start + segment.m_size;
  long long pos = segment.m_start;
  for (;;) {
    if ((total >= 0 && pos >= total) || (stop >= 0 && pos >= stop)) return pos;
    long len;
    if (mkvparser::GetUIntLength(segment.m_pReader, pos, len) != 0) return -1;
    const long long id = mkvparser::ReadID(segment.m_pReader, pos, len);
    if (id == kClusterId) return pos;
    if (id < 0) return -1;
    pos += len;
    if (mkvparser::GetUIntLength(segment.m_pReader, pos, len) != 0) return -1;
    const long long size = mkvparser::ReadUInt(segment.m_pReader, pos, len);
    if (size < 0) return -1;
    pos += len + size;
  }
}

bool Ordered(const std::vector<ClusterHeads::Head>& heads) {
  for (size_t i = 0; i < heads.size(); ++i) {
    if (heads[i].timecode < 0 || (i > 0 && heads[i].timecode < heads[i - 1].timecode))
      return false;
  }
  return true;
}

}  // namespace

long ClusterHeads::Load(mkvparser::Segment* segment) {
  heads_.clear();
  ordered_ = true;
  if (!segment || segment->GetCount() != 0) return E_PARSE_FAILED;
  const long long headers = segment->ParseHeaders();
  if (headers < 0) return static_cast<long>(headers);
  if (headers > 0) return E_BUFFER_NOT_FULL;
  if (!segment->GetInfo() || !segment->GetTracks()) return E_FILE_FORMAT_INVALID;
  const long long start = HeadersEnd(*segment);
  // The reader answered differently the second time.
  if (start < 0) return E_FILE_FORMAT_INVALID;

  HeadWalk walk(segment, start, &heads_);
  long status;
  do {
    status = walk.Step();
  } while (status == kFoundCluster || status == kGoOn);
  heads_.shrink_to_fit();
  ordered_ = Ordered(heads_);
  return status < 0 ? status : 0;
}

}  // namespace KVL
