#ifndef TESTS_CODEC_MKV_CODEC_PRIVATE_H_
#define TESTS_CODEC_MKV_CODEC_PRIVATE_H_

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// The CodecPrivate of the first track of data file `name`: in every committed file the first
// element 63 A2, with a one-byte size. Empty if absent.
inline std::vector<unsigned char> FirstTrackCodecPrivate(const std::string& name) {
  std::ifstream in(std::string(CODEC_TEST_DATA_DIR) + "/" + name, std::ios::binary);
  const std::vector<unsigned char> file{std::istreambuf_iterator<char>(in), {}};
  const unsigned char id[] = {0x63, 0xA2};
  const auto at = std::search(file.begin(), file.end(), id, id + 2);
  const long size = file.end() - at > 2 && at[2] & 0x80 ? at[2] & 0x7F : -1;
  if (size < 0 || file.end() - at < 3 + size) return {};
  return std::vector<unsigned char>(at + 3, at + 3 + size);
}

#endif  // TESTS_CODEC_MKV_CODEC_PRIVATE_H_
