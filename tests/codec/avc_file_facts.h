#ifndef TESTS_CODEC_AVC_FILE_FACTS_H_
#define TESTS_CODEC_AVC_FILE_FACTS_H_

#include <fstream>
#include <map>
#include <string>

// The key=value lines of tests/data/avc/NAME.txt: what ffprobe and ffmpeg's
// own SPS reader said about NAME.mkv.
inline std::map<std::string, std::string> AvcFileFacts(const std::string& name) {
  std::map<std::string, std::string> facts;
  std::ifstream in(std::string(CODEC_TEST_DATA_DIR) + "/avc/" + name + ".txt");
  for (std::string line; std::getline(in, line);) {
    const size_t equals = line.find('=');
    if (equals != std::string::npos) facts[line.substr(0, equals)] = line.substr(equals + 1);
  }
  return facts;
}

#endif  // TESTS_CODEC_AVC_FILE_FACTS_H_
