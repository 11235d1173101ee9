// ParsePrivateData on the CodecPrivate of H.264 files that x264 wrote, against
// what ffprobe and ffmpeg's own SPS reader report about them (NAME.txt beside
// each file, from tests/data/avc/make_avc_files.sh).
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "codec/avc_bit_reader.h"
#include "codec/parse_private_data.h"
#include "gtest/gtest.h"
#include "tests/codec/exact_buffer.h"
#include "tests/codec/mkv_codec_private.h"

namespace {

using Bytes = std::vector<unsigned char>;
using Facts = std::map<std::string, std::string>;

Facts ReadFacts(const std::string& path) {
  Facts facts;
  std::ifstream in(path);
  for (std::string line; std::getline(in, line);) {
    const size_t equals = line.find('=');
    if (equals != std::string::npos) facts[line.substr(0, equals)] = line.substr(equals + 1);
  }
  return facts;
}

using Field = std::function<int64_t(const ParsePrivateData&)>;
#define FIELD(f) {#f, [](const ParsePrivateData& p) -> int64_t { return p.f; }}

// The fields that ffmpeg's reading may name, under our names.
const std::map<std::string, Field>& Fields() {
  static const std::map<std::string, Field> fields = {
      FIELD(profile_idc), FIELD(constraint_flags), FIELD(level_idc), FIELD(seq_parameter_set_id),
      FIELD(chroma_format_idc), FIELD(separate_colour_plane_flag), FIELD(bit_depth_luma_minus8),
      FIELD(bit_depth_chroma_minus8), FIELD(qpprime_y_zero_transform_bypass_flag),
      FIELD(seq_scaling_matrix_present_flag), FIELD(log2_max_frame_num_minus4),
      FIELD(pic_order_cnt_type), FIELD(log2_max_pic_order_cnt_lsb_minus4),
      FIELD(max_num_ref_frames), FIELD(gaps_in_frame_num_value_allowed_flag),
      FIELD(pic_width_in_mbs_minus1), FIELD(pic_height_in_map_units_minus1),
      FIELD(frame_mbs_only_flag), FIELD(mb_adaptive_frame_field_flag),
      FIELD(direct_8x8_inference_flag), FIELD(frame_cropping_flag), FIELD(frame_crop_left_offset),
      FIELD(frame_crop_right_offset), FIELD(frame_crop_top_offset),
      FIELD(frame_crop_bottom_offset), FIELD(vui_parameters_present_flag),
      FIELD(aspect_ratio_info_present_flag), FIELD(aspect_ratio_idc), FIELD(sar_width),
      FIELD(sar_height), FIELD(overscan_info_present_flag), FIELD(overscan_appropriate_flag),
      FIELD(video_signal_type_present_flag), FIELD(video_format), FIELD(video_full_range_flag),
      FIELD(colour_description_present_flag), FIELD(colour_primaries),
      FIELD(transfer_characteristics), FIELD(matrix_coefficients),
      FIELD(chroma_loc_info_present_flag), FIELD(chroma_sample_loc_type_top_field),
      FIELD(chroma_sample_loc_type_bottom_field), FIELD(timing_info_present_flag),
      FIELD(num_units_in_tick), FIELD(time_scale), FIELD(fixed_frame_rate_flag),
      FIELD(nal_hrd_parameters_present_flag), FIELD(nalHrd.cpb_cnt_minus1),
      FIELD(nalHrd.bit_rate_scale), FIELD(nalHrd.cpb_size_scale),
      FIELD(nalHrd.bit_rate_value_minus1[0]), FIELD(nalHrd.cpb_size_value_minus1[0]),
      FIELD(nalHrd.cbr_flag[0]), FIELD(nalHrd.initial_cpb_removal_delay_length_minus1),
      FIELD(nalHrd.cpb_removal_delay_length_minus1), FIELD(nalHrd.dpb_output_delay_length_minus1),
      FIELD(nalHrd.time_offset_length), FIELD(vcl_hrd_parameters_present_flag),
      FIELD(pic_struct_present_flag), FIELD(bitstream_restriction_flag),
      FIELD(motion_vectors_over_pic_boundaries_flag), FIELD(max_bytes_per_pic_denom),
      FIELD(max_bits_per_mb_denom), FIELD(log2_max_mv_length_horizontal),
      FIELD(log2_max_mv_length_vertical), FIELD(max_num_reorder_frames),
      FIELD(max_dec_frame_buffering)};
  return fields;
}

// The picture size that the cropping leaves, in luma samples.
std::string CroppedSize(const ParsePrivateData& p) {
  const unsigned int cropX = p.chroma_format_idc == 3 ? 1 : 2;
  const unsigned int cropY = cropX * (2 - p.frame_mbs_only_flag);
  const unsigned int width = (p.pic_width_in_mbs_minus1 + 1) * 16 -
                             cropX * (p.frame_crop_left_offset + p.frame_crop_right_offset);
  const unsigned int height =
      (p.pic_height_in_map_units_minus1 + 1) * 16 * (2 - p.frame_mbs_only_flag) -
      cropY * (p.frame_crop_top_offset + p.frame_crop_bottom_offset);
  return std::to_string(width) + "x" + std::to_string(height);
}

class RealAVCFileTest : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const std::string name = std::string("avc/") + GetParam();
    record_ = FirstTrackCodecPrivate(TestDataPath(name + ".mkv"));
    facts_ = ReadFacts(TestDataPath(name + ".txt"));
    ASSERT_GT(record_.size(), 8u);
    ASSERT_FALSE(facts_.empty());
    ASSERT_EQ(0, parsed_.Init(record_.data(), static_cast<unsigned int>(record_.size())));
  }

  Bytes record_;
  Facts facts_;
  ParsePrivateData parsed_;
};

TEST_P(RealAVCFileTest, AgreesWithFFprobeAndFFmpegsReading) {
  const std::map<std::string, int> profiles = {
      {"Constrained Baseline", 66}, {"Main", 77}, {"High", 100}, {"High 10", 110},
      {"High 4:4:4 Predictive", 244}};
  EXPECT_EQ(profiles.at(facts_["profile"]), parsed_.profile_idc);
  EXPECT_EQ(facts_["level"], std::to_string(parsed_.level_idc));
  EXPECT_EQ(facts_["width"] + "x" + facts_["height"], CroppedSize(parsed_));
  EXPECT_EQ(facts_["coded_width"] + "x" + facts_["coded_height"], CroppedSize(parsed_));
  if (parsed_.aspect_ratio_idc == 255) {
    EXPECT_EQ(facts_["sample_aspect_ratio"],
              std::to_string(parsed_.sar_width) + ":" + std::to_string(parsed_.sar_height));
  }
  unsigned int rate = 0, buffer = 0;
  parsed_.getBitrate(&rate);
  parsed_.getVBV(&buffer);
  EXPECT_EQ(facts_.count("hrd_bit_rate") ? facts_["hrd_bit_rate"] : "64", std::to_string(rate));
  EXPECT_EQ(facts_.count("hrd_cpb_size") ? facts_["hrd_cpb_size"] : "16", std::to_string(buffer));
  size_t compared = 0;
  for (const auto& [key, value] : facts_) {
    if (key.rfind("sps.", 0) != 0) continue;
    const auto field = Fields().find(key.substr(4));
    if (field == Fields().end()) {
      ADD_FAILURE() << "no field for " << key;
      continue;
    }
    EXPECT_EQ(value, std::to_string(field->second(parsed_))) << key;
    ++compared;
  }
  EXPECT_GT(compared, 30u);
}

TEST_P(RealAVCFileTest, EveryTruncationOfTheRecordStaysInside) {
  // The first set ends at 8 + its length; the rest of the record is not read.
  const size_t setEnd = 8 + (record_[6] << 8 | record_[7]);
  ForEachPrefix(record_, [&](unsigned char* data, unsigned int size) {
    ParsePrivateData p;
    const int expected = size < 6 ? -2 : size < setEnd ? -1 : 0;
    EXPECT_EQ(expected, p.Init(data, size)) << size;
    EXPECT_EQ(expected == 0 ? parsed_.profile_idc : 0, p.profile_idc);
    EXPECT_EQ(expected == 0 ? parsed_.max_dec_frame_buffering : 0,
              p.max_dec_frame_buffering);
  });
}

TEST_P(RealAVCFileTest, EveryTruncationOfTheSetKeepsWhatWasRead) {
  const unsigned int nalSize = record_[6] << 8 | record_[7];
  Bytes rbsp(nalSize - 1);
  unsigned int rbspSize = static_cast<unsigned int>(rbsp.size());
  ASSERT_EQ(0, AVCCopyRemove_Emulation_Prevention_0x03_Byte(
                   record_.data() + 9, rbspSize, rbsp.data(), &rbspSize));
  rbsp.resize(rbspSize);
  ForEachPrefix(rbsp, [&](unsigned char* data, unsigned int size) {
    ParsePrivateData p;
    EXPECT_EQ(0, p.AVCParseSPS(data, size));
    EXPECT_EQ(size >= 1 ? parsed_.profile_idc : 0, p.profile_idc);
    EXPECT_EQ(size >= 3 ? parsed_.level_idc : 0, p.level_idc);
    if (size == rbsp.size()) {
      EXPECT_EQ(parsed_.max_dec_frame_buffering, p.max_dec_frame_buffering);
    }
  });
}

INSTANTIATE_TEST_SUITE_P(X264, RealAVCFileTest,
                         testing::Values("baseline_l10", "main_l30_vui",
                                         "high_l41_vbr_hrd", "high_l40_cbr_hrd",
                                         "high10_l31_interlaced", "high444_l20"));

}  // namespace
