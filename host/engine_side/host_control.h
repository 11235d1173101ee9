#ifndef HOST_ENGINE_SIDE_HOST_CONTROL_H_
#define HOST_ENGINE_SIDE_HOST_CONTROL_H_

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "plugin/kvl/container_interface.h"
#include "plugin/kvl/control_interface.h"
#include "plugin/kvl/stream_interface.h"

namespace kvlhost {

// What the plug-in told the engine, for the report and the tests.
struct ControlRecord {
  unsigned long long uidsIssued = 0;
  std::vector<unsigned long long> added;
  std::vector<unsigned long long> enabled;
  std::vector<unsigned long long> removed;
  std::vector<unsigned long long> titlesRequested;
  std::vector<int> openTitleResults;
  std::vector<unsigned long long> titlesClosed;
  std::vector<uint32_t> seeksToTime;
  std::vector<unsigned long long> notReady;
  unsigned int languageQueries = 0;
  unsigned int stateQueries = 0;
  unsigned int sinkNotifications = 0;
};

// The sink a stream notifies when it first finds its data not ready.
class NotReadyCounter : public KVL::DataNotReadySink {
 public:
  int notify() override;
  unsigned int count() const { return count_; }

 private:
  std::atomic<unsigned int> count_{0};
};

// The engine's side of the contract, as the plug-in sees it. It owns the
// streams the plug-in adds, until removeStream() or dropStreams() gives them
// up; a reading thread holds a lease on its stream for each call, and a
// stream given up during a call dies when that call's lease ends, never
// under it. The host keeps the playing position; a seekToTime() is kept for
// the player to carry out. Reading threads may call in, so the record is
// locked; the lock is never held across a call into the plug-in.
class HostControl : public KVL::ControlInterface {
 public:
  // A normal playing state: neither of the two waiting states.
  static constexpr int kStatePlaying = 4001;

  HostControl() = default;
  ~HostControl() override;
  HostControl(const HostControl&) = delete;
  HostControl& operator=(const HostControl&) = delete;

  // The container that requestOpenTitle() opens titles of; not owned.
  void attach(KVL::ContainerInterface* container) { container_ = container; }

  unsigned long long createUID() override;
  KVL::vorq_string<char> getDefaultAudioLanguage() override;
  KVL::vorq_string<char> getDefaultSubtitleLanguage() override;
  int32_t getCurrentTime(int32_t reserved) override;
  int getPlaybackState() override;
  KVL::DataNotReadySink* getDataNotReadySink() override;
  int reportDataNotReady(unsigned long long streamUID) override;
  KVL::StreamInterface* getStream(unsigned long long streamUID) override;
  int requestOpenTitle(unsigned long long titleUID) override;
  int titleClosed(unsigned long long titleUID) override;
  int seekToTime(uint32_t time, KVL::SeekRequest request) override;
  int addStream(KVL::StreamInterface* stream) override;
  int removeStream(unsigned long long streamUID) override;
  int enableStream(unsigned long long streamUID, int enable) override;

  // The streams still held, in the order they were added.
  std::vector<KVL::StreamInterface*> streams() const;
  // The stream for one call on it, or null once it has been given up.
  std::shared_ptr<KVL::StreamInterface> lease(unsigned long long streamUID) const;
  // Gives up every stream still held; to be done, and every lease ended,
  // before the plug-in goes.
  void dropStreams();

  void setPosition(int32_t time) { position_ = time; }
  // The time of the last seekToTime() not yet carried out, then none.
  std::optional<uint32_t> takeSeekRequest();

  ControlRecord record() const;

 private:
  mutable std::mutex mutex_;
  KVL::ContainerInterface* container_ = nullptr;
  unsigned long long nextUID_ = 1;
  std::vector<std::shared_ptr<KVL::StreamInterface>> streams_;
  std::atomic<int32_t> position_{0};
  std::optional<uint32_t> pendingSeek_;
  NotReadyCounter sink_;
  ControlRecord record_;
};

}  // namespace kvlhost

#endif  // HOST_ENGINE_SIDE_HOST_CONTROL_H_
