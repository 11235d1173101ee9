#ifndef HOST_PLAY_PLAY_REPORT_H_
#define HOST_PLAY_PLAY_REPORT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/engine_side/host_control.h"

namespace kvlhost {

// Times are timecode ticks unless a name says otherwise; "engine" times are
// in the engine's units of 10 microseconds.

// Facts of an H.264 sequence parameter set. The coded size is whole
// macroblocks; the cropped size takes the frame cropping off.
struct AvcFacts {
  unsigned int profile = 0;
  unsigned int level = 0;
  uint32_t codedWidth = 0;
  uint32_t codedHeight = 0;
  uint32_t croppedWidth = 0;
  uint32_t croppedHeight = 0;
  // From the HRD parameters, when the set has any.
  bool hrd = false;
  uint32_t peakBitrate = 0;  // bits per second
  uint32_t bufferSize = 0;   // bits
};

struct SeekOutcome {
  uint32_t requested = 0;
  int result = 0;
  uint32_t actual = 0;
};

struct StreamReport {
  size_t index = 0;  // in the title's stream list
  unsigned long long uid = 0;
  std::string kind;  // "video" or "audio"
  unsigned int track = 0;  // the reader's track position
  std::string format;  // video: the format text; audio: the tag as hex
  uint32_t width = 0, height = 0;  // video
  // Video: the pixel aspect ratio as the plug-in gave it, 0:0 where it
  // found none (neither a display size nor an MPEG-4 part 2 header).
  uint32_t aspectX = 0, aspectY = 0;
  uint32_t sampleRate = 0, channels = 0;  // audio
  uint32_t duration = 0;
  size_t codecPrivateSize = 0;
  std::optional<AvcFacts> avc;
  std::vector<SeekOutcome> seeks;
  uint64_t chunks = 0;
  uint64_t bytes = 0;
  uint32_t firstStart = 0;
  uint32_t lastEnd = 0;
  std::string ending;  // why reading stopped
  // No chunk at all in a play from the start of a title with a length.
  bool deliveredNothing = false;
};

struct ChapterReport {
  unsigned long long uid = 0;
  uint32_t engineStart = 0;
  uint32_t engineEnd = 0;
};

struct RefusedFormat {
  std::string kind;
  std::string format;
  uint32_t reason = 0;
};

struct PlayReport {
  std::string module;
  std::vector<std::string> interfaces;
  std::vector<std::string> mimeTypes;
  std::string uri;
  bool playable = false;
  std::vector<RefusedFormat> refused;
  std::optional<int> openResult;
  std::vector<unsigned long long> titles;
  std::vector<ChapterReport> chapters;
  std::optional<unsigned int> selectedChapter;
  std::optional<unsigned long long> currentChapter;  // after the selection
  std::vector<StreamReport> streams;
  ControlRecord engine;
  // How the source file changed between the start and the end of the play
  // (SourceFile::Change()); empty if it didn't.
  std::string fileChange;
};

}  // namespace kvlhost

#endif  // HOST_PLAY_PLAY_REPORT_H_
