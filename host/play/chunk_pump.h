#ifndef HOST_PLAY_CHUNK_PUMP_H_
#define HOST_PLAY_CHUNK_PUMP_H_

#include <cstdint>
#include <mutex>
#include <vector>

#include "host/engine_side/host_control.h"
#include "host/play/chunk_sink.h"
#include "host/play/play_report.h"
#include "host/play/progress_line.h"
#include "host/play/title_time_scale.h"
#include "plugin/kvl/stream_interface.h"

namespace kvlhost {

// Reads the open streams of a title to their ends, as the engine's reading
// threads do, and hands every chunk to a sink before giving it back to its
// allocator. A stream stops at its end (a null chunk), at -8 (nothing more
// until a seek) and at any other failed read. `reports` is parallel to
// `streams` and receives the totals; the pump keeps the engine's playing
// position in `control`: the earliest time that all streams still reading
// have reached.
class ChunkPump {
 public:
  ChunkPump(const std::vector<KVL::StreamInterface*>& streams,
            std::vector<StreamReport>& reports, ChunkSink& sink, HostControl& control,
            const TitleTimeScale& scale, ProgressLine& progress);

  // Always reads next from the stream furthest behind by getLastChunkTime().
  void ReadInterleaved();
  // Reads each stream on a thread of its own.
  void ReadOnThreads();

 private:
  // Reads one chunk of stream `index`; false once the stream has stopped.
  bool ReadOne(size_t index);
  void Deliver(size_t index, KVL::MediaChunk& chunk);
  void Stop(size_t index, const char* ending);
  void UpdatePosition();

  const std::vector<KVL::StreamInterface*>& streams_;
  std::vector<StreamReport>& reports_;
  ChunkSink& sink_;
  HostControl& control_;
  const TitleTimeScale& scale_;
  ProgressLine& progress_;
  // Serialises deliveries: reports, sink, position and progress.
  std::mutex mutex_;
  std::vector<bool> reading_;
  // The latest end time each stream has delivered; with reordered frames
  // a chunk may end before the one ahead of it.
  std::vector<uint32_t> reached_;
};

}  // namespace kvlhost

#endif  // HOST_PLAY_CHUNK_PUMP_H_
