#include "codec/parse_private_data.h"

#include <vector>

#include "gtest/gtest.h"
#include "tests/codec/bit_writer.h"

namespace {

using Bytes = std::vector<unsigned char>;

bool HasChromaBlock(unsigned int profile) {
  for (unsigned int listed : {100, 110, 122, 244, 44, 83, 86})
    if (profile == listed) return true;
  return false;
}

// The fields up to vui_parameters_present_flag of a 4:2:0 frame of 4x3
// macroblocks, level 3.0, pic_order_cnt_type 2, log2_max_frame_num_minus4 5.
BitWriter SpsUpToVui(unsigned int profile, bool vui) {
  BitWriter w;
  w.Byte(profile).Byte(0x40).Byte(30).UE(0);
  if (HasChromaBlock(profile)) w.UE(1).UE(0).UE(0).Bits(0, 1).Bits(0, 1);
  return w.UE(5).UE(2).UE(1).Bits(0, 1).UE(3).UE(2).Bits(1, 1).Bits(1, 1).Bits(0, 1).Bits(vui, 1);
}

// A decoder configuration record holding `sets` as NAL units of type 7,
// with emulation prevention bytes as encoders write them.
Bytes Record(const std::vector<Bytes>& sets) {
  Bytes record = {1, 0x64, 0, 0x1E, 0xFF, static_cast<unsigned char>(0xE0 | sets.size())};
  for (const Bytes& rbsp : sets) {
    Bytes nal = {0x67};
    unsigned int zeros = 0;
    for (unsigned char byte : rbsp) {
      if (zeros >= 2 && byte <= 3) nal.push_back(3), zeros = 0;
      nal.push_back(byte);
      zeros = byte == 0 ? zeros + 1 : 0;
    }
    record.push_back(static_cast<unsigned char>(nal.size() >> 8));
    record.push_back(static_cast<unsigned char>(nal.size()));
    record.insert(record.end(), nal.begin(), nal.end());
  }
  return record;
}

int Init(ParsePrivateData& p, Bytes data) {
  return p.Init(data.data(), static_cast<unsigned int>(data.size()));
}
int Parse(ParsePrivateData& p, Bytes rbsp) {
  return p.AVCParseSPS(rbsp.data(), static_cast<unsigned int>(rbsp.size()));
}

TEST(ParsePrivateDataTest, ReadsTheBranchesOfEachProfile) {
  for (unsigned int profile : {100, 110, 122, 244, 44, 83, 86, 66, 77, 88, 118, 128}) {
    ParsePrivateData p;
    ASSERT_EQ(0, Init(p, Record({SpsUpToVui(profile, false).bytes()})));
    EXPECT_EQ(HasChromaBlock(profile) ? 1 : 0, p.chroma_format_idc);
    EXPECT_EQ(5, p.log2_max_frame_num_minus4) << profile;
    EXPECT_EQ(2u, p.pic_height_in_map_units_minus1);
  }
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
    EXPECT_EQ(chroma == 3 ? 1 : 0, p.separate_colour_plane_flag);
    EXPECT_EQ(1, p.bit_depth_chroma_minus8);
    for (unsigned int i = 0; i < 12; ++i)
      EXPECT_EQ(i < lists ? (0xA5A >> (lists - 1 - i)) & 1 : 0, p.seq_scaling_list_present_flag[i]);
    EXPECT_EQ(9, p.log2_max_pic_order_cnt_lsb_minus4);
  }
  BitWriter w;
  w.Byte(77).Byte(0).Byte(30).UE(0).UE(0).UE(1).Bits(1, 1).SE(-5).SE(3).UE(255);
  for (int i = 0; i < 255; ++i) w.SE(i % 2 ? i : -i);
  w.UE(300).Bits(0, 1).UE(0).UE(0).Bits(1, 1).Bits(0, 3);
  ParsePrivateData p;
  Parse(p, w.bytes());
  EXPECT_EQ(-5, p.offset_for_non_ref_pic);
  EXPECT_EQ(3, p.offset_for_top_to_bottom_field);
  EXPECT_EQ(-254, p.offset_for_ref_frame[254]);
  EXPECT_EQ(253, p.offset_for_ref_frame[253]);
  EXPECT_EQ(0, p.offset_for_ref_frame[255]);
  EXPECT_EQ(44, p.max_num_ref_frames);  // 300, cut to 8 bits.
  EXPECT_EQ(1, p.frame_mbs_only_flag);
}

// A VUI with only HRD sets, 1024000 bit/s with a 2048000-bit buffer, then
// pic_struct_present_flag and a bitstream restriction directly behind them:
// no low_delay_hrd_flag.
BitWriter WithHRD(bool nal, bool vcl) {
  BitWriter w = SpsUpToVui(66, true);
  w.Bits(0, 5);
  for (bool present : {nal, vcl}) {
    w.Bits(present, 1);
    if (present)
      w.UE(0).Bits(4, 4).Bits(6, 4).UE(999).UE(1999).Bits(1, 1).Bits(23, 5).Bits(23, 5).Bits(5, 5)
          .Bits(24, 5);
  }
  return w.Bits(1, 1).Bits(1, 1).Bits(1, 1).UE(2).UE(1).UE(16).UE(15).UE(2).UE(4);
}

TEST(ParsePrivateDataTest, FlagsFollowTheHRDSetsDirectly) {
  for (int sets = 0; sets < 4; ++sets) {
    const bool nal = sets & 1, vcl = sets & 2;
    ParsePrivateData p;
    Parse(p, WithHRD(nal, vcl).bytes());
    EXPECT_EQ(nal ? 24 : 0, p.nalHrd.time_offset_length);
    EXPECT_EQ(vcl ? 1 : 0, p.vclHrd.cbr_flag[0]);
    EXPECT_EQ(1, p.pic_struct_present_flag);
    EXPECT_EQ(15, p.log2_max_mv_length_vertical);
    EXPECT_EQ(4, p.max_dec_frame_buffering);
    unsigned int rate = 0, buffer = 0;
    p.getBitrate(&rate);
    p.getVBV(&buffer);
    EXPECT_EQ(sets ? 1024000u : 64u, rate);
    EXPECT_EQ(sets ? 2048000u : 16u, buffer);
  }
}

TEST(ParsePrivateDataTest, ThirtyTwoCpbEntriesFitAndThirtyThreeStopTheParse) {
  for (unsigned int count : {31, 32}) {
    BitWriter w = SpsUpToVui(66, true);
    w.Bits(0, 5).Bits(1, 1).UE(count).Bits(0, 8);
    for (unsigned int i = 0; i <= count; ++i) w.UE(i).UE(i).Bits(1, 1);
    w.Bits(0, 20).Bits(0, 1).Bits(1, 1).Bits(0, 1);
    ParsePrivateData p;
    Parse(p, w.bytes());
    EXPECT_EQ(1, p.nal_hrd_parameters_present_flag);
    EXPECT_EQ(count == 31 ? 31 : 0, p.nalHrd.cpb_cnt_minus1);
    EXPECT_EQ(count == 31 ? 31u : 0u, p.nalHrd.cpb_size_value_minus1[31]);
    EXPECT_EQ(count == 31 ? 1 : 0, p.pic_struct_present_flag);
  }
}

// A refused record leaves the last parse alone; a new parse starts from a
// cleared record, even one of a NAL header alone.
TEST(ParsePrivateDataTest, InitRefusesBadRecordsAndClearsBeforeAParse) {
  const Bytes good = Record({SpsUpToVui(77, false).bytes()});
  const struct {
    Bytes data;
    int result;
  } cases[] = {
      {Bytes(good.begin(), good.begin() + 5), -2},
      {{1, 0, 0, 2, 5, 0xE0, 7}, -1},             // 0 0 2 anywhere
      {Bytes(good.begin(), good.end() - 1), -1},  // set runs past the end
      {{1, 2, 3, 4, 5, 0xE1, 0}, -1},             // length cut short
      {{1, 2, 3, 4, 5, 0xE1, 0, 0}, -1},          // no NAL header
      {{1, 2, 3, 4, 5, 0xE2, 0, 1, 0x67}, -1},    // second set missing
  };
  for (const auto& c : cases) {
    ParsePrivateData p;
    Parse(p, WithHRD(true, false).bytes());
    EXPECT_EQ(c.result, Init(p, c.data)) << c.data.size();
    EXPECT_EQ(66, p.profile_idc);
    EXPECT_EQ(1, p.nal_hrd_parameters_present_flag);
  }
  ParsePrivateData p;
  EXPECT_EQ(-2, p.Init(nullptr, 100));
  EXPECT_EQ(0, Init(p, {1, 2, 3, 4, 5, 0xE0}));  // no sets; 0 0 3 is no start code
  EXPECT_EQ(0, Init(p, {1, 0, 0, 3, 5, 0xE0}));
  Parse(p, WithHRD(true, true).bytes());
  ASSERT_EQ(0, Init(p, Record({WithHRD(true, false).bytes(), SpsUpToVui(77, false).bytes()})));
  EXPECT_EQ(77, p.profile_idc);
  EXPECT_EQ(0, p.pic_struct_present_flag + p.vui_parameters_present_flag + p.max_dec_frame_buffering);
  EXPECT_EQ(0u, p.nalHrd.bit_rate_value_minus1[0]);
  ASSERT_EQ(0, Init(p, {1, 2, 3, 4, 5, 0xE1, 0, 1, 0x67}));
  EXPECT_EQ(0, p.profile_idc);
}

TEST(ParsePrivateDataTest, RatesTakeTheFasterSetAndNALOnATie) {
  const struct {
    uint32_t nalRate, nalScale, vclRate, vclScale, rate, buffer;
  } cases[] = {
      {0, 0, 0, 0, 64, 16 << 3},         {999, 4, 0, 0, 1024000, 16 << 3},  // NAL alone
      {0, 0, 999, 4, 1024000, 16 << 5},  {15, 0, 7, 1, 1024, 16 << 3},      // tie: NAL's buffer
      {15, 0, 8, 1, 1152, 16 << 5},      {0xFFFFFFFF, 0, 0, 0, 64, 16 << 5},  // 2^32 wraps to 0
  };
  for (const auto& c : cases) {
    ParsePrivateData p;
    p.nalHrd.bit_rate_value_minus1[0] = c.nalRate;
    p.nalHrd.bit_rate_scale = static_cast<uint8_t>(c.nalScale);
    p.nalHrd.cpb_size_scale = 3;
    p.vclHrd.bit_rate_value_minus1[0] = c.vclRate;
    p.vclHrd.bit_rate_scale = static_cast<uint8_t>(c.vclScale);
    p.vclHrd.cpb_size_scale = 5;
    unsigned int rate = 0, buffer = 0;
    EXPECT_EQ(0, p.getBitrate(&rate) + p.getVBV(&buffer));
    EXPECT_EQ(c.rate, rate);
    EXPECT_EQ(c.buffer, buffer);
  }
  ParsePrivateData p;
  EXPECT_EQ(-2, p.getBitrate(nullptr));
  EXPECT_EQ(-2, p.getVBV(nullptr));
}

}  // namespace
