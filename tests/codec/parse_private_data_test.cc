// What the x264 records don't hold: VCL HRD sets, long CPB tables, scaling
// list flags, picture order type 1 and records that are refused.
#include "codec/parse_private_data.h"

#include "gtest/gtest.h"
#include "tests/codec/test_bytes.h"

namespace {

// The fields up to vui_parameters_present_flag of a 4:2:0 frame of 4x3
// macroblocks, level 3.0, pic_order_cnt_type 2.
BitWriter SpsUpToVui(unsigned int profile, bool vui) {
  BitWriter w;
  w.Byte(profile).Byte(0x40).Byte(30).UE(0);
  return w.UE(5).UE(2).UE(1).Bits(0, 1).UE(3).UE(2).Bits(1, 1).Bits(1, 1).Bits(0, 1).Bits(vui, 1);
}

// A VUI with only HRD sets of `cpbCount` + 1 entries (a negative rate leaves a set out), then
// pic_struct_present_flag and a bitstream restriction directly behind: no low_delay_hrd_flag.
Bytes WithHRD(int64_t nalRate, int64_t vclRate, unsigned int cpbCount = 0) {
  BitWriter w = SpsUpToVui(66, true);
  w.Bits(0, 5);
  for (const auto& [rate, sizeScale] : {std::make_pair(nalRate, 0), std::make_pair(vclRate, 2)}) {
    w.Bits(rate >= 0, 1);
    if (rate < 0) continue;
    w.UE(cpbCount).Bits(4, 4).Bits(sizeScale, 4);
    for (unsigned int i = 0; i <= cpbCount; ++i) w.UE(rate).UE(i).Bits(1, 1);
    w.Bits(23, 5).Bits(23, 5).Bits(5, 5).Bits(24, 5);
  }
  return w.Bits(1, 1).Bits(1, 1).Bits(1, 1).UE(2).UE(1).UE(16).UE(15).UE(2).UE(4).bytes();
}

int Parse(ParsePrivateData& p, Bytes rbsp) {
  return p.AVCParseSPS(rbsp.data(), static_cast<unsigned int>(rbsp.size()));
}

// 32 CPB entries fit, 33 stop the parse. The faster set gives the rate and buffer, NAL's on a tie.
TEST(ParsePrivateDataTest, HRDSetsAndTheRatesTheyGive) {
  const struct {
    int64_t nal, vcl;
    unsigned int cpbCount, rate, buffer;
    size_t cut = 0;  // bytes parsed, where not all: a cut inside an entry stops the parse too
  } cases[] = {{7, 7, 0, 8192, 16}, {7, 8, 0, 9216, 64}, {7, -1, 31, 8192, 16},
               {7, -1, 32, 64, 16}, {1, -1, 2, 2048, 16, 10}};
  for (const auto& c : cases) {
    ParsePrivateData p;
    const Bytes sps = WithHRD(c.nal, c.vcl, c.cpbCount);
    EXPECT_EQ(0, Parse(p, Bytes(sps.begin(), c.cut ? sps.begin() + c.cut : sps.end())));
    const bool whole = c.cpbCount < 32 && !c.cut;
    EXPECT_EQ(whole && c.vcl >= 0 ? 1 : 0, p.vclHrd.cbr_flag[0]);
    EXPECT_EQ(whole ? c.cpbCount : 0, p.nalHrd.cpb_size_value_minus1[c.cpbCount % 32]);
    EXPECT_EQ(whole ? 4 : 0, p.max_dec_frame_buffering);
    EXPECT_EQ(whole, p.pic_struct_present_flag == 1);  // nothing read behind a refusal
    EXPECT_EQ(30, p.level_idc);  // a cut parse keeps what it read
    unsigned int rate = 0, buffer = 0;
    EXPECT_EQ(0, p.getBitrate(&rate) + p.getVBV(&buffer));
    EXPECT_EQ(c.rate, rate) << c.nal << " " << c.vcl;
    EXPECT_EQ(c.buffer, buffer);
  }
  EXPECT_EQ(-4, ParsePrivateData().getBitrate(nullptr) + ParsePrivateData().getVBV(nullptr));
}

// 8 scaling list flags, 12 for 4:4:4, with no list behind any flag; and
// pic_order_cnt_type 1 with its most offsets (255).
TEST(ParsePrivateDataTest, ScalingListFlagsAndPictureOrderOffsets) {
  for (unsigned int chroma : {1, 3}) {
    const unsigned int lists = chroma == 3 ? 12 : 8;
    BitWriter w;
    w.Byte(100).Byte(0).Byte(40).UE(2).UE(chroma).Bits(1, chroma == 3 ? 1 : 0);
    w.UE(2).UE(1).Bits(1, 1).Bits(1, 1).Bits(0xA5A, lists).UE(7).UE(0).UE(9);
    ParsePrivateData p;
    Parse(p, w.bytes());
    for (unsigned int i = 0; i < 12; ++i)
      EXPECT_EQ(i < lists ? (0xA5A >> (lists - 1 - i)) & 1 : 0, p.seq_scaling_list_present_flag[i]);
    EXPECT_EQ(9, p.log2_max_pic_order_cnt_lsb_minus4);
  }
  BitWriter w;
  w.Byte(77).Byte(0).Byte(30).UE(0).UE(0).UE(1).Bits(1, 1).SE(-5).SE(3).UE(255);
  for (int i = 0; i < 255; ++i) w.SE(i % 2 ? i : -i);
  w.UE(3).Bits(0, 1).UE(0).UE(0).Bits(1, 1).Bits(0, 3);
  ParsePrivateData p;
  Parse(p, w.bytes());
  EXPECT_EQ(-254, p.offset_for_ref_frame[254]);
  EXPECT_EQ(0, p.offset_for_ref_frame[255]);
  EXPECT_EQ(1, p.frame_mbs_only_flag);
}

// A refused record leaves the last parse alone; each set's parse starts
// from a cleared record, even one of a NAL header alone.
TEST(ParsePrivateDataTest, InitRefusesBadRecordsAndClearsBeforeAParse) {
  for (Bytes refused : {Bytes{1, 0, 0, 2, 5, 0xE0, 7}, Bytes{1, 2, 3, 4, 5, 0xE1, 0, 0}}) {
    ParsePrivateData p;
    Parse(p, WithHRD(999, -1));
    EXPECT_EQ(-1, p.Init(refused.data(), static_cast<unsigned int>(refused.size())));
    EXPECT_EQ(1, p.nal_hrd_parameters_present_flag);
  }
  ParsePrivateData p;
  EXPECT_EQ(-2, p.Init(nullptr, 100));
  Parse(p, WithHRD(999, 999));
  Bytes twoSets = {1, 0x64, 0, 0x1E, 0xFF, 0xE2, 0, 8, 0x67, 66, 0x40, 30, 0xFF, 0xFF, 0xFF, 0xFF};
  const Bytes second = SpsUpToVui(77, false).Bits(1, 1).bytes();  // and the stop bit
  twoSets.insert(twoSets.end(), {0, static_cast<unsigned char>(second.size() + 1), 0x67});
  twoSets.insert(twoSets.end(), second.begin(), second.end());
  ASSERT_EQ(0, p.Init(twoSets.data(), static_cast<unsigned int>(twoSets.size())));
  EXPECT_EQ(77, p.profile_idc);
  EXPECT_EQ(0, p.aspect_ratio_info_present_flag + p.vclHrd.cbr_flag[0] + p.max_dec_frame_buffering);
  Bytes headerOnly = {1, 2, 3, 4, 5, 0xE1, 0, 1, 0x67};
  ASSERT_EQ(0, p.Init(headerOnly.data(), static_cast<unsigned int>(headerOnly.size())));
  EXPECT_EQ(0, p.profile_idc);
}

// The fields from the set's id to the end, in the order the syntax reads them.
std::vector<uint64_t> FieldsInOrder(const ParsePrivateData& p) {
  return {p.seq_parameter_set_id, p.log2_max_frame_num_minus4, p.pic_order_cnt_type,
          p.max_num_ref_frames, p.pic_width_in_mbs_minus1, p.frame_mbs_only_flag,
          p.direct_8x8_inference_flag, p.vui_parameters_present_flag,
          p.aspect_ratio_info_present_flag, p.aspect_ratio_idc, p.sar_width, p.sar_height,
          p.overscan_info_present_flag, p.overscan_appropriate_flag,
          p.video_signal_type_present_flag, p.video_format, p.video_full_range_flag,
          p.colour_description_present_flag, p.colour_primaries, p.matrix_coefficients,
          p.chroma_loc_info_present_flag, p.chroma_sample_loc_type_bottom_field,
          p.timing_info_present_flag, p.num_units_in_tick, p.time_scale,
          p.fixed_frame_rate_flag, p.nal_hrd_parameters_present_flag, p.nalHrd.bit_rate_scale,
          p.nalHrd.time_offset_length, p.vcl_hrd_parameters_present_flag,
          p.pic_struct_present_flag, p.bitstream_restriction_flag, p.max_dec_frame_buffering};
}

// A set cut anywhere keeps the fields before the cut and reads none behind
// it, though the bits left of the field cut in two would make a later flag.
// The sets differ in length ahead of the VUI, so each field is cut at every
// bit within a byte.
TEST(ParsePrivateDataTest, ACutSetReadsNothingBehindTheCut) {
  for (unsigned int id : {0, 1, 3, 7}) {
    for (unsigned int overscan : {0, 1}) {
      BitWriter w;
      w.Byte(66).Byte(0).Byte(30).UE(id).UE(6).UE(2).UE(13).Bits(0, 1).UE(21).UE(17);
      w.Bits(1, 1).Bits(1, 1).Bits(0, 1).Bits(1, 1).Bits(1, 1).Bits(255, 8).Bits(0xFFFF, 16);
      w.Bits(0xFFFF, 16).Bits(overscan, 1).Bits(1, overscan).Bits(1, 1).Bits(5, 3).Bits(1, 1);
      w.Bits(1, 1).Bits(0xFF, 8).Bits(0xFF, 8).Bits(0xFF, 8).Bits(1, 1).UE(5).UE(5).Bits(1, 1);
      w.Bits(0xFFFFFFFF, 32).Bits(0xFFFFFFFF, 32).Bits(1, 1).Bits(1, 1).UE(0).Bits(15, 4);
      w.Bits(15, 4).UE(30).UE(30).Bits(1, 1).Bits(0xFFFFF, 20).Bits(0, 1).Bits(1, 1).Bits(1, 1);
      w.Bits(1, 1).UE(2).UE(1).UE(16).UE(15).UE(2).UE(4);
      ParsePrivateData whole;
      Parse(whole, w.bytes());
      const std::vector<uint64_t> expected = FieldsInOrder(whole);
      ASSERT_EQ(4u, expected.back());
      ForEachPrefix(w.bytes(), [&](unsigned char* data, unsigned int size) {
        ParsePrivateData cut;
        cut.AVCParseSPS(data, size);
        const std::vector<uint64_t> read = FieldsInOrder(cut);
        size_t i = 0;
        while (i < read.size() && read[i] == expected[i]) ++i;
        for (; i < read.size(); ++i) EXPECT_EQ(0u, read[i]) << "field " << i << " of " << size;
      });
    }
  }
}

}  // namespace
