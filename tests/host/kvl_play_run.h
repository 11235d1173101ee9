// kvl-play run in-process through the module that the build makes, or as a
// child process of its own.
#ifndef MKVSOURCE_TESTS_HOST_KVL_PLAY_RUN_H_
#define MKVSOURCE_TESTS_HOST_KVL_PLAY_RUN_H_

#include <string>
#include <vector>

namespace hosttest {

struct HostRun {
  int status;
  std::string report;
  std::string errors;
};

// The committed files in tests/data/media that play, by name.
inline constexpr const char* kPlayedMedia[] = {
    "h264_aac", "hevc_mp3", "h264_mp3_laced", "h264_mp3_wide_pixels", "h264_aac_scale100us",
    "mpeg4_aac", "sample"};

// The module built beside the tests unless `args` name one with --module.
HostRun RunKvlPlay(std::vector<std::string> args);

// The status a child gets when it can't become the user nobody.
constexpr int kNoNobody = 125;

// The built kvl-play as a child process, with the module built beside it,
// "NAME=value" `environment` added to this one's, and as the user nobody
// when `asNobody` and this process is root. The status is the exit status,
// or 128 and the signal that ended it.
HostRun RunKvlPlayChild(const std::vector<std::string>& args,
                        const std::vector<std::string>& environment = {},
                        bool asNobody = false);

}  // namespace hosttest

#endif  // MKVSOURCE_TESTS_HOST_KVL_PLAY_RUN_H_
