#ifndef TESTS_CODEC_MKV_CODEC_PRIVATE_H_
#define TESTS_CODEC_MKV_CODEC_PRIVATE_H_

#include <string>
#include <vector>

// `name` under the tests' data folder.
std::string TestDataPath(const std::string& name);

// The CodecPrivate of the first track of a Matroska file, read with
// mkvparser from a copy in memory; empty when there is none.
std::vector<unsigned char> FirstTrackCodecPrivate(const std::string& path);

#endif  // TESTS_CODEC_MKV_CODEC_PRIVATE_H_
