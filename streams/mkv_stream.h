#ifndef STREAMS_MKV_STREAM_H_
#define STREAMS_MKV_STREAM_H_

#include <cstdint>
#include <string>

#include "mkvparser/mkvparser.h"
#include "plugin/kvl/stream_interface.h"
#include "plugin/mkv_source.h"
#include "streams/cluster_pin.h"
#include "streams/title_internal.h"

namespace KVL {

// Which blocks a reader takes; not the engine's media type nor the Matroska
// track type.
enum MKVBlockType_t : uint32_t { kAudioBlocks = 1, kVideoBlocks = 2 };

// States of the block cursor's walk over all clusters and blocks. To state,
// when:
//   WalkStart        by openStream(); it stays while the first cluster has no
//                    usable first block.
//   WalkInBlock      from WalkStart at the first cluster's first block; from
//                    WalkNextBlock or WalkNextCluster at a usable entry; by a
//                    seek at its landing entry (landWalk).
//   WalkNextBlock    from WalkInBlock when the block isn't the track's or has
//                    no frame left.
//   WalkNextCluster  from WalkNextBlock at the cluster's end or a bad status;
//                    it stays over clusters without a usable first block.
//   WalkEnd          from WalkNextCluster past the last cluster; from
//                    WalkInBlock at an entry that is gone; by a failed seek and
//                    a frame that can't be read.
enum WalkState : uint32_t {
  WalkStart = 0,
  WalkInBlock = 1,
  WalkNextBlock = 2,
  WalkNextCluster = 3,
  WalkEnd = 4,
};

// One track of the open title. Each reader walks the whole segment with its
// own cursor and takes the blocks whose track number is its track index plus
// one. The engine owns the object from addStream() on; every chunk must have
// come back through its allocator before the stream is destroyed. Codec data
// belongs to the stream until getCodecData() hands it over.
//
// Locking: the title's mutex, shared with the source and the title's other
// streams. The constructors, openStream(), readStream(), seekStream(),
// resetStream() and getSyncPoint() hold it for their whole length, the file
// read included, so that one thread at a time walks the parser and the
// reader; seekStream() calls resetStream() under it. Of the destructors only
// VideoStream's takes it, to give its auxiliary tracks back to the engine.
// closeStream(), getCodecData(), setReadSpeed(), setReadMode(), scanStream(),
// info() and the accessors take none: the engine calls them between reads.
class MKVSource::MKVStream : public StreamInterface {
 public:
  MKVStream(MKVBlockType_t type, TitleInternal* title, unsigned int trackIndex,
            Properties* properties);
  ~MKVStream() override;

  uint32_t duration() override;
  int info(vorq_string<unsigned char>* name, vorq_string<char>* language,
           vorq_string<char>* country, unsigned int* trackType) override;
  FormatDescriptor* format() override;
  Properties* properties() override;
  int resetStream() override;
  int getSyncPoint(int direction, unsigned int time, unsigned int* syncPoint) override;
  int closeStream() override;
  int readStream(MediaChunk** chunk) override;
  bool setReadSpeed(int speed) override;
  bool setReadMode(StreamReadMode mode) override;
  bool getCodecData(List<TypedMediaBuffer*>* list) override;
  int scanStream(long long time, long long* result) override;

  int openStream(int, int);
  // The track's default frame duration in nanoseconds, 0 when it has none.
  unsigned long long GetDuration() const { return defaultDuration; }
  void setTimecodeScale(int64_t scale) { timecodeScale = scale; }

  // The block cursor; callers hold the title's mutex.
  bool GetFrame(mkvparser::Block::Frame* frame);
  long long GetBlockTime() const;
  const mkvparser::Cluster* GetCluster();

 protected:
  // The track this reader was made for, or null if the position holds none.
  const mkvparser::Track* track() const;
  // The time in nanoseconds of `ticks`, saturated instead of overflowing.
  int64_t TicksToNanoseconds(uint32_t ticks) const;
  const char* kindName() const;
  long seekTrack(int64_t timeNs);
  // Sets the whole walk for a seek's landing: goes on at frame `frame` of
  // `at`, in the cluster that `blocks` holds, as if nothing were delivered.
  void landWalk(const mkvparser::BlockEntry* at, int32_t frame);
  void storeDuration();

  MKVBlockType_t blockType;
  unsigned int trackIndex;
  int64_t lastBlockTime = -1;
  TypedMediaBuffer* codecData = nullptr;
  IBufferAllocator* allocator;
  TitleInternal* title;
  FormatDescriptor formatDescriptor = {};
  uint32_t duration_ = 0;
  uint32_t trackType = 0;
  std::string language;
  std::string country;
  Properties* properties_;
  std::basic_string<unsigned char> name;
  MKVSource* source = nullptr;
  // The cluster of the walk, which `blocks` holds parsed and `entry` points
  // into; or the segment's end marker past the last.
  const mkvparser::Cluster* cluster = nullptr;
  ClusterPin blocks;
  const mkvparser::BlockEntry* entry = nullptr;
  int32_t frameIndex = 0;
  WalkState walkState = WalkStart;
  unsigned long long defaultDuration = 0;
  // The segment's; openTitle() writes it right after construction.
  int64_t timecodeScale = 1000000;

 private:
  bool StartWalk();
  bool TakeFrameOfBlock(mkvparser::Block::Frame* frame);
  void NextBlock();
  void NextCluster();
  bool EnterCluster();
  void releaseCodecData();
};

}  // namespace KVL

#endif  // STREAMS_MKV_STREAM_H_
