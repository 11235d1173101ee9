// Random and truncated input for the analysers, for the sanitizers to watch.
#include <random>

#include "codec/asp_aspect_ratio.h"
#include "codec/parse_private_data.h"
#include "gtest/gtest.h"
#include "tests/codec/test_bytes.h"

namespace {

// Random bytes, half the time mostly zeros (long Exp-Golomb codes, large counts, start codes),
// with `header` planted at `at` most of the time.
Bytes RandomBytes(std::mt19937& random, size_t size, const Bytes& header, size_t at) {
  const bool sparse = random() % 2;
  Bytes bytes(size);
  for (unsigned char& byte : bytes)
    byte = sparse && random() % 4 ? 0 : static_cast<unsigned char>(random());
  if (size >= at + header.size() && random() % 4)
    std::copy(header.begin(), header.end(), bytes.begin() + at);
  return bytes;
}

TEST(CodecFuzzTest, InitParseAndAspectRatioSearchStayInsideRandomData) {
  std::mt19937 random(20240601);
  for (int round = 0; round < 2000; ++round) {
    // A set count and a length that lead into the parse.
    const size_t size = random() % 96, length = size - 8 + random() % 3;
    const Bytes header = {static_cast<unsigned char>(0xE1 + random() % 2),
                          static_cast<unsigned char>(length >> 8),
                          static_cast<unsigned char>(length)};
    ForEachPrefix(RandomBytes(random, size, header, 5), [](unsigned char* data, unsigned int size) {
      ParsePrivateData p;
      p.Init(data, size);
      p.AVCParseSPS(data, size);
      EXPECT_LE(p.nalHrd.cpb_cnt_minus1, 31);  // the tables hold 32
      EXPECT_LE(p.vclHrd.cpb_cnt_minus1, 31);
    });
    // A layer start code where the search looks.
    const unsigned char layer = static_cast<unsigned char>(0x20 | random() % 16);
    ForEachPrefix(RandomBytes(random, random() % 64, {0, 0, 1, layer}, 4 + 5 * (random() % 4)),
                  [](unsigned char* data, unsigned int size) {
                    unsigned int width = 0, height = 0;
                    getPARFromASPBitstream(data, size, &width, &height);
                  });
  }
}

}  // namespace
