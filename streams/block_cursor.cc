// The block cursor's walk. Writes cluster, blocks, entry, frameIndex and walkState.
#include "streams/mkv_stream.h"

namespace KVL {
namespace {

bool IsUsable(const mkvparser::BlockEntry* entry) {
  return entry && !entry->EOS() && entry->GetBlock();
}

}  // namespace

// Moves by one cluster head: the first with none current, else the next one;
// past the last, the segment's end marker, which stays. The cluster is the
// reader's parsed one; the last one's blocks go before the next one's are
// parsed.
const mkvparser::Cluster* MKVSource::MKVStream::GetCluster() {
  mkvparser::Segment* segment = title->source->segment;
  if (cluster && cluster->EOS()) return cluster;
  const size_t next = cluster ? blocks.index() + 1 : 0;
  blocks.reset();
  if (!segment) return cluster = nullptr;
  blocks = title->clusters.Pin(segment, *title->source->clusterHeads, next);
  cluster = blocks.get() ? blocks.get() : &segment->m_eos;
  return cluster;
}

long long MKVSource::MKVStream::GetBlockTime() const {
  return entry->GetBlock()->GetTime(cluster);
}

bool MKVSource::MKVStream::GetFrame(mkvparser::Block::Frame* frame) {
  for (;;) {
    switch (walkState) {
      case WalkStart:
        if (!StartWalk()) return false;
        break;
      case WalkInBlock:
        // After a failed seek the entry may be gone: that ends the walk.
        if (!IsUsable(entry)) {
          walkState = WalkEnd;
          return false;
        }
        if (entry->GetBlock()->GetFrameCount() < 1) return false;
        if (TakeFrameOfBlock(frame)) return true;
        walkState = WalkNextBlock;
        break;
      case WalkNextBlock:
        NextBlock();
        break;
      case WalkNextCluster:
        NextCluster();
        break;
      default:
        return false;
    }
  }
}

// Starts at the first cluster; gives up, staying at the start, when it has no
// usable first block.
bool MKVSource::MKVStream::StartWalk() {
  cluster = nullptr;
  if (!GetCluster() || cluster->EOS() || !EnterCluster()) return false;
  if (entry->GetBlock()->GetFrameCount() < 1) return false;
  walkState = WalkInBlock;
  return true;
}

// The block's track number, less one, is compared with the track index; a
// track number of 0 matches nothing.
bool MKVSource::MKVStream::TakeFrameOfBlock(mkvparser::Block::Frame* frame) {
  const mkvparser::Block* block = entry->GetBlock();
  const long long trackOfBlock = block->GetTrackNumber() - 1;
  if (trackOfBlock != static_cast<long long>(trackIndex)) return false;
  if (frameIndex < 0 || frameIndex >= block->GetFrameCount()) return false;
  *frame = block->GetFrame(frameIndex++);
  return true;
}

// A usable entry is one of the blocks that the pin holds.
void MKVSource::MKVStream::NextBlock() {
  const long status = cluster->GetNext(entry, entry);
  if (status == 0 && IsUsable(entry)) {
    frameIndex = 0;
    walkState = WalkInBlock;
    return;
  }
  // A bad status ends the cluster as much as its end does.
  walkState = WalkNextCluster;
}

// Passes over clusters without blocks; the segment's end ends the walk.
void MKVSource::MKVStream::NextCluster() {
  if (!GetCluster() || cluster->EOS()) {
    blocks.reset();
    entry = nullptr;
    walkState = WalkEnd;
    return;
  }
  if (EnterCluster()) walkState = WalkInBlock;
}

bool MKVSource::MKVStream::EnterCluster() {
  if (cluster->GetFirst(entry) != 0 || !IsUsable(entry)) return false;
  frameIndex = 0;
  return true;
}

}  // namespace KVL
