// Sync chunks told from payloads: by the first picture's NAL unit type, with
// the length prefix that the codec private data states; cut or wrong data is
// no sync chunk.
#include "host/plot/sync_chunks.h"

#include <gtest/gtest.h>

namespace kvlhost {
namespace {

using Bytes = std::vector<uint8_t>;

StreamReport Stream(const char* kind, const char* format) {
  StreamReport stream;
  stream.kind = kind;
  stream.format = format;
  return stream;
}

TEST(SyncChunks, ToldByTheFirstPictureOfTheChunk) {
  const Bytes avc2 = {1, 100, 0, 13, 0xfd};  // lengthSizeMinusOne 1: two-byte lengths
  Bytes hevc(23);
  hevc[21] = 1;  // two-byte lengths too
  const struct {
    StreamReport stream;
    Bytes codecPrivate;
    Bytes payload;
    bool sync;
  } cases[] = {
      {Stream("audio", "0x000000ff"), {}, {}, true},
      {Stream("video", ""), {}, {0, 0, 0, 1, 0x65}, false},
      // H.264: an SEI (6) before an IDR slice (5); a non-IDR slice (1) before one.
      {Stream("video", "H264"), {}, {0, 0, 0, 1, 6, 0, 0, 0, 2, 0x65, 0}, true},
      {Stream("video", "H264"), {}, {0, 0, 0, 1, 0x41, 0, 0, 0, 1, 0x65}, false},
      {Stream("video", "H264"), avc2, {0, 1, 0x65}, true},
      {Stream("video", "H264"), {}, {0, 1, 0x65}, false},  // a four-byte length cut short
      {Stream("video", "H264"), {}, {0, 0, 0, 9, 0x65}, false},  // longer than the chunk
      {Stream("video", "H264"), {}, {0, 0, 0, 0, 0, 0, 0, 1, 0x65}, false},  // an empty unit
      // H.265: a parameter set (32) before a CRA (21); IDR_W_RADL (19); TRAIL_R (1).
      {Stream("video", "H265"), hevc, {0, 2, 0x40, 1, 0, 2, 0x2a, 1}, true},
      {Stream("video", "H265"), hevc, {0, 2, 0x26, 1}, true},
      {Stream("video", "H265"), hevc, {0, 2, 0x02, 1}, false},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(i);
    const SyncChunks sync(cases[i].stream, cases[i].codecPrivate);
    EXPECT_EQ(sync.IsSync(cases[i].payload.data(), cases[i].payload.size()), cases[i].sync);
  }
}

}  // namespace
}  // namespace kvlhost
