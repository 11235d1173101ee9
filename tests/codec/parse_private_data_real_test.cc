// ParsePrivateData on records x264 wrote, against what ffprobe and ffmpeg's SPS reader report
// (NAME.txt beside each file, from tests/data/avc/make_avc_files.sh).
#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>

#include "codec/parse_private_data.h"
#include "gtest/gtest.h"
#include "tests/codec/avc_file_facts.h"
#include "tests/codec/test_bytes.h"

namespace {

// The CodecPrivate of the first track: in every file here the first element 63 A2, with a
// one-byte size. Empty if absent.
Bytes FirstTrackCodecPrivate(const std::string& name) {
  std::ifstream in(std::string(CODEC_TEST_DATA_DIR) + "/avc/" + name + ".mkv", std::ios::binary);
  const Bytes file{std::istreambuf_iterator<char>(in), {}};
  const unsigned char id[] = {0x63, 0xA2};
  const auto at = std::search(file.begin(), file.end(), id, id + 2);
  const long size = file.end() - at > 2 && at[2] & 0x80 ? at[2] & 0x7F : -1;
  if (size < 0 || file.end() - at < 3 + size) return {};
  return Bytes(at + 3, at + 3 + size);
}
#define SPS(f) {#f, [](const ParsePrivateData& p) -> int64_t { return p.f; }}

class RealAVCFileTest : public testing::TestWithParam<const char*> {};

// Fields, then every cut of the record: refused inside the first set.
TEST_P(RealAVCFileTest, AgreesWithFFprobeAndFFmpegsReadingWholeAndCut) {
  Bytes record = FirstTrackCodecPrivate(GetParam());
  std::map<std::string, std::string> facts = AvcFileFacts(GetParam());
  ASSERT_GT(record.size(), 8u);
  // The last field of each part: a read that goes wrong shifts every field behind it.
  const std::map<std::string, std::function<int64_t(const ParsePrivateData&)>> fields = {
      SPS(separate_colour_plane_flag),
      SPS(bit_depth_chroma_minus8), SPS(seq_scaling_matrix_present_flag),
      SPS(log2_max_pic_order_cnt_lsb_minus4), SPS(pic_order_cnt_type),
      SPS(mb_adaptive_frame_field_flag), SPS(frame_crop_bottom_offset), SPS(sar_height),
      SPS(overscan_appropriate_flag), SPS(matrix_coefficients),
      SPS(chroma_sample_loc_type_bottom_field), SPS(fixed_frame_rate_flag),
      SPS(nalHrd.cbr_flag[0]), SPS(nalHrd.time_offset_length), SPS(max_dec_frame_buffering)};
  ParsePrivateData parsed;
  ASSERT_EQ(0, parsed.Init(record.data(), static_cast<unsigned int>(record.size())));
  size_t compared = 0;
  for (const auto& [name, field] : fields) {
    if (!facts.count("sps." + name)) continue;
    EXPECT_EQ(facts["sps." + name], std::to_string(field(parsed))) << name;
    ++compared;
  }
  EXPECT_GE(compared, 3u);

  const size_t setEnd = 8 + (record[6] << 8 | record[7]);
  ForEachPrefix(record, [&](unsigned char* data, unsigned int size) {
    ParsePrivateData q;
    const int expected = size < 6 ? -2 : size < setEnd ? -1 : 0;
    EXPECT_EQ(expected, q.Init(data, size)) << size;
    EXPECT_EQ(expected == 0 ? parsed.max_dec_frame_buffering : 0, q.max_dec_frame_buffering);
  });
}

INSTANTIATE_TEST_SUITE_P(X264, RealAVCFileTest,
                         testing::Values("baseline_l10", "main_l30_vui", "high_l41_vbr_hrd",
                                         "high_l40_cbr_hrd", "high10_l31_interlaced",
                                         "high444_l20"));

}  // namespace
