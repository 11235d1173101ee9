// Random and truncated input for the analysers: every result stays within
// what they can answer, and the sanitizers see no read outside the data.
#include <random>
#include <vector>

#include "codec/asp_aspect_ratio.h"
#include "codec/parse_private_data.h"
#include "gtest/gtest.h"
#include "tests/codec/exact_buffer.h"

namespace {

using Bytes = std::vector<unsigned char>;

// Random bytes, half the time mostly zeros: long Exp-Golomb codes, large
// counts and start code patterns.
Bytes RandomBytes(std::mt19937& random, size_t size) {
  const bool sparse = random() % 2;
  Bytes bytes(size);
  for (unsigned char& byte : bytes)
    byte = sparse && random() % 4 ? 0 : static_cast<unsigned char>(random());
  return bytes;
}

TEST(CodecFuzzTest, InitAndParseStayInsideRandomRecords) {
  std::mt19937 random(20240601);
  for (int round = 0; round < 2000; ++round) {
    Bytes record = RandomBytes(random, random() % 96);
    // Most records get a header that leads into the parse.
    if (record.size() > 8 && random() % 4) {
      record[5] = static_cast<unsigned char>(0xE0 | (1 + random() % 2));
      const size_t length = record.size() - 8 + random() % 3;
      record[6] = static_cast<unsigned char>(length >> 8);
      record[7] = static_cast<unsigned char>(length);
    }
    ForEachPrefix(record, [](unsigned char* data, unsigned int size) {
      ParsePrivateData p;
      const int result = p.Init(data, size);
      EXPECT_TRUE(result == 0 || result == -1 || result == -2) << result;
      EXPECT_EQ(0, p.AVCParseSPS(data, size));
      EXPECT_LE(p.nalHrd.cpb_cnt_minus1, 31);
      EXPECT_LE(p.vclHrd.cpb_cnt_minus1, 31);
    });
  }
}

TEST(CodecFuzzTest, AspectRatioSearchStaysInsideRandomStreams) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    Bytes stream = RandomBytes(random, random() % 64);
    // Plant a layer start code where the search looks.
    const size_t offset = 4 + 5 * (random() % 4);
    if (stream.size() >= offset + 4) {
      const unsigned char code[] = {0, 0, 1,
                                    static_cast<unsigned char>(0x20 | random() % 16)};
      std::copy(code, code + 4, stream.begin() + offset);
    }
    ForEachPrefix(stream, [](unsigned char* data, unsigned int size) {
      unsigned int width = 0, height = 0;
      if (getPARFromASPBitstream(data, size, &width, &height)) {
        EXPECT_LE(width, 255u);
        EXPECT_LE(height, 255u);
      }
    });
  }
}

}  // namespace
