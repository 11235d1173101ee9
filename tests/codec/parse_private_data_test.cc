#include "codec/parse_private_data.h"

#include <set>
#include <utility>
#include <vector>

#include "gtest/gtest.h"
#include "tests/codec/bit_writer.h"

namespace {

using Bytes = std::vector<unsigned char>;

const std::set<unsigned int> kChromaProfiles = {100, 110, 122, 244, 44, 83, 86};

// The fields up to vui_parameters_present_flag of a 4:2:0 frame of 4x3
// macroblocks, level 3.0, pic_order_cnt_type 2, log2_max_frame_num_minus4 5.
BitWriter SpsUpToVui(unsigned int profile, bool vui) {
  BitWriter w;
  w.Byte(profile).Byte(0x40).Byte(30).UE(0);
  if (kChromaProfiles.count(profile)) w.UE(1).UE(0).UE(0).Bits(0, 1).Bits(0, 1);
  return w.UE(5).UE(2).UE(1).Bits(0, 1).UE(3).UE(2).Bits(1, 1).Bits(1, 1).Bits(0, 1).Bits(vui, 1);
}

// A VUI with only HRD sets (a negative rate leaves a set out) of
// `cpbCount` + 1 entries, then pic_struct_present_flag and a bitstream
// restriction directly behind them: no low_delay_hrd_flag.
Bytes WithHRD(int64_t nalRate, int64_t vclRate, unsigned int cpbCount = 0) {
  BitWriter w = SpsUpToVui(66, true);
  w.Bits(0, 5);
  for (const auto& [rate, cpbSizeScale] : {std::make_pair(nalRate, 0), std::make_pair(vclRate, 2)}) {
    w.Bits(rate >= 0, 1);
    if (rate < 0) continue;
    w.UE(cpbCount).Bits(4, 4).Bits(cpbSizeScale, 4);
    for (unsigned int i = 0; i <= cpbCount; ++i) w.UE(rate).UE(i).Bits(1, 1);
    w.Bits(23, 5).Bits(23, 5).Bits(5, 5).Bits(24, 5);
  }
  return w.Bits(1, 1).Bits(1, 1).Bits(1, 1).UE(2).UE(1).UE(16).UE(15).UE(2).UE(4).bytes();
}

// A decoder configuration record holding `sets` as NAL units of type 7,
// with emulation prevention bytes as encoders write them.
Bytes Record(const std::vector<Bytes>& sets) {
  Bytes record = {1, 0x64, 0, 0x1E, 0xFF, static_cast<unsigned char>(0xE0 | sets.size())};
  for (const Bytes& rbsp : sets) {
    Bytes nal = {0x67};
    for (unsigned char byte : rbsp) {
      if (nal.size() > 1 && nal.end()[-1] == 0 && nal.end()[-2] == 0 && byte <= 3) nal.push_back(3);
      nal.push_back(byte);
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

TEST(ParsePrivateDataTest, ReadsTheChromaBlockOfSevenProfilesOnly) {
  for (unsigned int profile : {100, 110, 122, 244, 44, 83, 86, 66, 77, 88, 118, 128}) {
    ParsePrivateData p;
    ASSERT_EQ(0, Init(p, Record({SpsUpToVui(profile, false).bytes()})));
    EXPECT_EQ(kChromaProfiles.count(profile), p.chroma_format_idc);
    EXPECT_EQ(5, p.log2_max_frame_num_minus4) << profile;
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
  EXPECT_EQ(-5, p.offset_for_non_ref_pic);
  EXPECT_EQ(3, p.offset_for_top_to_bottom_field);
  EXPECT_EQ(-254, p.offset_for_ref_frame[254]);
  EXPECT_EQ(0, p.offset_for_ref_frame[255]);
  EXPECT_EQ(1, p.frame_mbs_only_flag);
}

// Two flags follow the HRD sets whether there are any or not; 32 entries fit,
// 33 stop the parse. The faster set gives the rate and its buffer, NAL's on a
// tie; no set gives 64 bit/s and 16 bits.
TEST(ParsePrivateDataTest, HRDSetsTheFlagsBehindThemAndTheRates) {
  const struct {
    int64_t nal, vcl;
    unsigned int cpbCount, rate, buffer;
  } cases[] = {
      {-1, -1, 0, 64, 16},       {999, -1, 0, 1024000, 16}, {-1, 999, 0, 1024000, 64},
      {7, 7, 0, 8192, 16},       {7, 8, 0, 9216, 64},       {0xFFFFFFFF, 0, 0, 1024, 64},  // 2^32 is 0
      {7, -1, 31, 8192, 16},     {7, -1, 32, 64, 16},
  };
  for (const auto& c : cases) {
    ParsePrivateData p;
    Parse(p, WithHRD(c.nal, c.vcl, c.cpbCount));
    const bool whole = c.cpbCount < 32;
    EXPECT_EQ(c.nal >= 0, p.nal_hrd_parameters_present_flag);
    EXPECT_EQ(whole && c.nal >= 0 ? 24 : 0, p.nalHrd.time_offset_length);
    EXPECT_EQ(whole && c.vcl >= 0 ? 1 : 0, p.vclHrd.cbr_flag[0]);
    EXPECT_EQ(whole ? c.cpbCount : 0, p.nalHrd.cpb_cnt_minus1);
    EXPECT_EQ(whole ? c.cpbCount : 0, p.nalHrd.cpb_size_value_minus1[c.cpbCount % 32]);
    EXPECT_EQ(whole, p.pic_struct_present_flag);
    EXPECT_EQ(whole ? 4 : 0, p.max_dec_frame_buffering);
    unsigned int rate = 0, buffer = 0;
    EXPECT_EQ(0, p.getBitrate(&rate) + p.getVBV(&buffer));
    EXPECT_EQ(c.rate, rate) << c.nal << " " << c.vcl;
    EXPECT_EQ(c.buffer, buffer);
  }
  ParsePrivateData p;
  EXPECT_EQ(-2, p.getBitrate(nullptr));
  EXPECT_EQ(-2, p.getVBV(nullptr));
}

// A refused record, or one without sets, leaves the last parse alone; a new
// parse starts from a cleared record, even one of a NAL header alone. (Every
// cut of a real record, in the x264 files' test, covers the short ones.)
TEST(ParsePrivateDataTest, InitRefusesBadRecordsAndClearsBeforeAParse) {
  const struct {
    Bytes data;
    int result;
  } cases[] = {
      {{1, 0, 0, 2, 5, 0xE0, 7}, -1},             // 0 0 2 anywhere
      {{1, 2, 3, 4, 5, 0xE1, 0, 0}, -1},          // no NAL header
      {{1, 0, 0, 3, 5, 0xE0}, 0},                 // 0 0 3 is no start code
  };
  for (const auto& c : cases) {
    ParsePrivateData p;
    Parse(p, WithHRD(999, -1));
    EXPECT_EQ(c.result, Init(p, c.data)) << c.data.size();
    EXPECT_EQ(1, p.nal_hrd_parameters_present_flag);
  }
  ParsePrivateData p;
  EXPECT_EQ(-2, p.Init(nullptr, 100));
  Parse(p, WithHRD(999, 999));
  ASSERT_EQ(0, Init(p, Record({WithHRD(999, -1), SpsUpToVui(77, false).bytes()})));
  EXPECT_EQ(77, p.profile_idc);
  EXPECT_EQ(0, p.pic_struct_present_flag + p.vui_parameters_present_flag + p.max_dec_frame_buffering);
  EXPECT_EQ(0u, p.nalHrd.bit_rate_value_minus1[0]);
  ASSERT_EQ(0, Init(p, {1, 2, 3, 4, 5, 0xE1, 0, 1, 0x67}));
  EXPECT_EQ(0, p.profile_idc);
}

}  // namespace
