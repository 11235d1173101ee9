#include "tests/source/source_fixture.h"

namespace mkvtest {

MkvFile VideoAndAudioFile() {
  MkvFile file;
  file.info.duration = 2000;
  file.tracks.push_back(Track::Video(1, "V_MPEG4/ISO/AVC", 320, 240));
  file.tracks.push_back(Track::Audio(2, "A_AAC", 48000, 2));
  file.clusters.push_back(Cluster{0, {SimpleBlock(1, 0, true, {Payload(50)}),
                                      SimpleBlock(2, 0, true, {Payload(20)})}});
  file.clusters.push_back(Cluster{1000, {SimpleBlock(1, 0, true, {Payload(60)}),
                                         SimpleBlock(2, 0, true, {Payload(21)})}});
  return file;
}

}  // namespace mkvtest
