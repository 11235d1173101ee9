#ifndef HOST_PLAY_PLAYER_H_
#define HOST_PLAY_PLAYER_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "host/engine_side/host_control.h"
#include "host/engine_side/host_error.h"
#include "host/engine_side/plugin_module.h"
#include "host/play/chunk_sink.h"
#include "host/play/play_report.h"
#include "host/play/title_time_scale.h"
#include "plugin/kvl/media_source.h"

namespace kvlhost {

struct PlayRequest {
  std::string uri;
  std::optional<uint32_t> seek;  // ticks
  bool exact = false;
  std::optional<int> speed;
  std::optional<unsigned int> chapter;  // 0 to 9
  bool threads = false;
  // Where a progress line goes; none without.
  std::ostream* progress = nullptr;
};

// A title's clock, from the lengths that Player::Open() reported.
TitleTimeScale ReportedTimeScale(const PlayReport& report);

// Plays one medium through a loaded module in the engine's order: canPlay,
// open, the title and its chapters, playFirstTitle, then per stream
// openStream and getCodecData, the requested speed and seeks, reading to
// the end; Close() or the destructor closes streams, title and file in that
// order, whatever point Play() or Open() reached.
class Player {
 public:
  // All three must outlive the player; `control` must be the one the
  // module's container was initialised with.
  Player(PluginModule& module, HostControl& control, ChunkSink& sink);
  ~Player();
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  // Fills `report` as far as playing got, in a play from the start with the
  // streams that delivered nothing marked. Returns kPlayed, kNotPlayable or
  // kNotOpened; throws a HostError for a chapter the title doesn't have.
  ExitStatus Play(const PlayRequest& request, PlayReport& report);
  // The first half of Play(): up to open streams with their codec data
  // taken, for a caller that reads them its own way. Returns as Play().
  ExitStatus Open(const std::string& uri, PlayReport& report);
  // The open title's streams, in the order the plug-in added them.
  const std::vector<KVL::StreamInterface*>& streams() const { return streams_; }
  // Closes what is open, once; the streams are gone afterwards.
  void Close();

 private:
  bool Probe(PlayReport& report);
  void ListTitle(PlayReport& report);
  void OpenStreams(PlayReport& report);
  void ApplyRequest(const PlayRequest& request, const TitleTimeScale& scale,
                    PlayReport& report);
  void SelectChapter(unsigned int index, bool exact, const TitleTimeScale& scale,
                     PlayReport& report);
  void SeekAll(uint32_t ticks, bool exact, PlayReport& report);
  void Read(const PlayRequest& request, const TitleTimeScale& scale, PlayReport& report);

  PluginModule& module_;
  HostControl& control_;
  ChunkSink& sink_;
  std::unique_ptr<KVL::MediaSource> source_;
  void* session_ = nullptr;
  bool opened_ = false;
  bool titleOpen_ = false;
  std::vector<KVL::StreamInterface*> streams_;
};

}  // namespace kvlhost

#endif  // HOST_PLAY_PLAYER_H_
