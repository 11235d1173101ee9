#ifndef TESTS_CODEC_MKV_CODEC_PRIVATE_H_
#define TESTS_CODEC_MKV_CODEC_PRIVATE_H_

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/loaded_segment.h"

// The CodecPrivate of the first track of the Matroska file `name` under the
// tests' data folder, as mkvparser reads it; empty when there is none.
inline std::vector<unsigned char> FirstTrackCodecPrivate(const std::string& name) {
  std::ifstream in(std::string(CODEC_TEST_DATA_DIR) + "/" + name, std::ios::binary);
  mkvtest::LoadedSegment loaded(mkvtest::Bytes(std::istreambuf_iterator<char>(in), {}));
  const mkvparser::Track* track =
      loaded.status == 0 ? loaded.segment->GetTracks()->GetTrackByIndex(0) : nullptr;
  size_t size = 0;
  const unsigned char* data = track ? track->GetCodecPrivate(size) : nullptr;
  return data ? std::vector<unsigned char>(data, data + size) : std::vector<unsigned char>();
}

#endif  // TESTS_CODEC_MKV_CODEC_PRIVATE_H_
