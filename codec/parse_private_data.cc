#include "codec/parse_private_data.h"

#include <vector>

#include "codec/avc_bit_cursor.h"
#include "codec/avc_bit_reader.h"

namespace {

// Configuration version, profile, compatibility, level, length size and the
// count of sequence parameter sets come before the first entry.
constexpr unsigned int kRecordHeaderSize = 6;
constexpr unsigned int kCpbTableSize = 32;

// Where one sequence parameter set NAL unit lies in the record.
struct NalEntry {
  unsigned int offset;
  unsigned int length;
};

bool HasStartCodePattern(const unsigned char* data, unsigned int size) {
  for (unsigned int i = 0; i + 2 < size; ++i) {
    if (data[i] == 0 && data[i + 1] == 0 && data[i + 2] < 3)
      return true;
  }
  return false;
}

// Lists the sequence parameter sets of the record. An entry that runs past
// the data, or an empty one, which has no NAL header, makes the record bad as
// a whole: false, so that nothing of it is parsed.
bool FindSequenceParameterSets(const unsigned char* data, unsigned int size,
                               std::vector<NalEntry>* entries) {
  const unsigned int count = data[5] & 0x1F;
  uint64_t offset = kRecordHeaderSize;
  for (unsigned int i = 0; i < count; ++i) {
    if (offset + 2 > size)
      return false;
    const unsigned int length = data[offset] << 8 | data[offset + 1];
    offset += 2;
    if (length == 0 || offset + length > size)
      return false;
    entries->push_back({static_cast<unsigned int>(offset), length});
    offset += length;
  }
  return true;
}

bool HasChromaFormat(uint8_t profile_idc) {
  switch (profile_idc) {
    case 100: case 110: case 122: case 244: case 44: case 83: case 86:
      return true;
    default:
      return false;
  }
}

uint32_t PeakBitRate(const ParsePrivateData::HRDParameters& hrd) {
  return (hrd.bit_rate_value_minus1[0] + 1u) << (hrd.bit_rate_scale + 6);
}

uint32_t BufferSize(const ParsePrivateData::HRDParameters& hrd) {
  return (hrd.cpb_size_value_minus1[0] + 1u) << (hrd.cpb_size_scale + 4);
}

}  // namespace

int ParsePrivateData::Init(unsigned char* data, unsigned int size) {
  if (!data || size < kRecordHeaderSize)
    return -2;
  std::vector<NalEntry> sets;
  if (HasStartCodePattern(data, size) ||
      !FindSequenceParameterSets(data, size, &sets))
    return -1;
  for (const NalEntry& set : sets) {
    // A set of the NAL header alone copies nothing and parses as empty.
    unsigned int rbspSize = set.length - 1;
    std::vector<unsigned char> rbsp(rbspSize);
    AVCCopyRemove_Emulation_Prevention_0x03_Byte(data + set.offset + 1,
                                                 rbspSize, rbsp.data(),
                                                 &rbspSize);
    AVCParseSPS(rbsp.data(), rbspSize);
  }
  return 0;
}

int ParsePrivateData::AVCParseSPS(unsigned char* data, unsigned int size) {
  *this = ParsePrivateData();
  AVCBitCursor bits(data, size);
  if (ReadProfileAndChroma(bits) && ReadPictureOrder(bits) &&
      ReadFrameGeometry(bits) &&
      bits.ReadBits(1, &vui_parameters_present_flag) &&
      vui_parameters_present_flag)
    ReadVUI(bits);
  return 0;
}

bool ParsePrivateData::ReadProfileAndChroma(AVCBitCursor& bits) {
  if (!bits.ReadBits(8, &profile_idc) || !bits.ReadBits(8, &constraint_flags) ||
      !bits.ReadBits(8, &level_idc) ||
      !bits.ReadExpGolomb(&seq_parameter_set_id))
    return false;
  if (!HasChromaFormat(profile_idc))
    return true;
  if (!bits.ReadExpGolomb(&chroma_format_idc))
    return false;
  if (chroma_format_idc == 3 && !bits.ReadBits(1, &separate_colour_plane_flag))
    return false;
  if (!bits.ReadExpGolomb(&bit_depth_luma_minus8) ||
      !bits.ReadExpGolomb(&bit_depth_chroma_minus8) ||
      !bits.ReadBits(1, &qpprime_y_zero_transform_bypass_flag) ||
      !bits.ReadBits(1, &seq_scaling_matrix_present_flag))
    return false;
  if (!seq_scaling_matrix_present_flag)
    return true;
  // The flags follow one another: the scaling lists they announce are
  // neither read nor stepped over.
  const unsigned int lists = chroma_format_idc == 3 ? 12 : 8;
  for (unsigned int i = 0; i < lists; ++i) {
    if (!bits.ReadBits(1, &seq_scaling_list_present_flag[i]))
      return false;
  }
  return true;
}

bool ParsePrivateData::ReadPictureOrder(AVCBitCursor& bits) {
  if (!bits.ReadExpGolomb(&log2_max_frame_num_minus4) ||
      !bits.ReadExpGolomb(&pic_order_cnt_type))
    return false;
  if (pic_order_cnt_type == 0)
    return bits.ReadExpGolomb(&log2_max_pic_order_cnt_lsb_minus4);
  if (pic_order_cnt_type != 1)
    return true;
  if (!bits.ReadBits(1, &delta_pic_order_always_zero_flag) ||
      !bits.ReadSignedExpGolomb(&offset_for_non_ref_pic) ||
      !bits.ReadSignedExpGolomb(&offset_for_top_to_bottom_field) ||
      !bits.ReadExpGolomb(&num_ref_frames_in_pic_order_cnt_cycle))
    return false;
  // An 8-bit count cannot pass the 256 entries of the table.
  for (unsigned int i = 0; i < num_ref_frames_in_pic_order_cnt_cycle; ++i) {
    if (!bits.ReadSignedExpGolomb(&offset_for_ref_frame[i]))
      return false;
  }
  return true;
}

bool ParsePrivateData::ReadFrameGeometry(AVCBitCursor& bits) {
  if (!bits.ReadExpGolomb(&max_num_ref_frames) ||
      !bits.ReadBits(1, &gaps_in_frame_num_value_allowed_flag) ||
      !bits.ReadExpGolomb(&pic_width_in_mbs_minus1) ||
      !bits.ReadExpGolomb(&pic_height_in_map_units_minus1) ||
      !bits.ReadBits(1, &frame_mbs_only_flag))
    return false;
  if (!frame_mbs_only_flag && !bits.ReadBits(1, &mb_adaptive_frame_field_flag))
    return false;
  if (!bits.ReadBits(1, &direct_8x8_inference_flag) ||
      !bits.ReadBits(1, &frame_cropping_flag))
    return false;
  return !frame_cropping_flag ||
         (bits.ReadExpGolomb(&frame_crop_left_offset) &&
          bits.ReadExpGolomb(&frame_crop_right_offset) &&
          bits.ReadExpGolomb(&frame_crop_top_offset) &&
          bits.ReadExpGolomb(&frame_crop_bottom_offset));
}

bool ParsePrivateData::ReadVUI(AVCBitCursor& bits) {
  if (!bits.ReadBits(1, &aspect_ratio_info_present_flag))
    return false;
  if (aspect_ratio_info_present_flag) {
    if (!bits.ReadBits(8, &aspect_ratio_idc))
      return false;
    if (aspect_ratio_idc == 255 &&
        (!bits.ReadBits(16, &sar_width) || !bits.ReadBits(16, &sar_height)))
      return false;
  }
  if (!bits.ReadBits(1, &overscan_info_present_flag) ||
      (overscan_info_present_flag &&
       !bits.ReadBits(1, &overscan_appropriate_flag)))
    return false;
  if (!ReadVideoSignalType(bits) ||
      !bits.ReadBits(1, &chroma_loc_info_present_flag))
    return false;
  if (chroma_loc_info_present_flag &&
      (!bits.ReadExpGolomb(&chroma_sample_loc_type_top_field) ||
       !bits.ReadExpGolomb(&chroma_sample_loc_type_bottom_field)))
    return false;
  if (!ReadTimingInfo(bits) ||
      !bits.ReadBits(1, &nal_hrd_parameters_present_flag) ||
      (nal_hrd_parameters_present_flag && !ReadHRD(bits, &nalHrd)) ||
      !bits.ReadBits(1, &vcl_hrd_parameters_present_flag) ||
      (vcl_hrd_parameters_present_flag && !ReadHRD(bits, &vclHrd)))
    return false;
  // No low_delay_hrd_flag here: the two flags follow the HRD sets directly,
  // whether a set was present or not.
  if (!bits.ReadBits(1, &pic_struct_present_flag) ||
      !bits.ReadBits(1, &bitstream_restriction_flag))
    return false;
  return !bitstream_restriction_flag || ReadBitstreamRestriction(bits);
}

bool ParsePrivateData::ReadVideoSignalType(AVCBitCursor& bits) {
  if (!bits.ReadBits(1, &video_signal_type_present_flag))
    return false;
  if (!video_signal_type_present_flag)
    return true;
  if (!bits.ReadBits(3, &video_format) ||
      !bits.ReadBits(1, &video_full_range_flag) ||
      !bits.ReadBits(1, &colour_description_present_flag))
    return false;
  return !colour_description_present_flag ||
         (bits.ReadBits(8, &colour_primaries) &&
          bits.ReadBits(8, &transfer_characteristics) &&
          bits.ReadBits(8, &matrix_coefficients));
}

bool ParsePrivateData::ReadTimingInfo(AVCBitCursor& bits) {
  if (!bits.ReadBits(1, &timing_info_present_flag))
    return false;
  return !timing_info_present_flag ||
         (bits.ReadBits(32, &num_units_in_tick) &&
          bits.ReadBits(32, &time_scale) &&
          bits.ReadBits(1, &fixed_frame_rate_flag));
}

bool ParsePrivateData::ReadBitstreamRestriction(AVCBitCursor& bits) {
  return bits.ReadBits(1, &motion_vectors_over_pic_boundaries_flag) &&
         bits.ReadExpGolomb(&max_bytes_per_pic_denom) &&
         bits.ReadExpGolomb(&max_bits_per_mb_denom) &&
         bits.ReadExpGolomb(&log2_max_mv_length_horizontal) &&
         bits.ReadExpGolomb(&log2_max_mv_length_vertical) &&
         bits.ReadExpGolomb(&max_num_reorder_frames) &&
         bits.ReadExpGolomb(&max_dec_frame_buffering);
}

bool ParsePrivateData::ReadHRD(AVCBitCursor& bits, HRDParameters* hrd) {
  uint64_t cpbCount;
  // More entries than the tables hold is no HRD set of the standard: the
  // parse stops before storing the count.
  if (!bits.ReadExpGolomb(&cpbCount) || cpbCount >= kCpbTableSize)
    return false;
  hrd->cpb_cnt_minus1 = static_cast<uint8_t>(cpbCount);
  if (!bits.ReadBits(4, &hrd->bit_rate_scale) ||
      !bits.ReadBits(4, &hrd->cpb_size_scale))
    return false;
  for (unsigned int i = 0; i <= hrd->cpb_cnt_minus1; ++i) {
    if (!bits.ReadExpGolomb(&hrd->bit_rate_value_minus1[i]) ||
        !bits.ReadExpGolomb(&hrd->cpb_size_value_minus1[i]) ||
        !bits.ReadBits(1, &hrd->cbr_flag[i]))
      return false;
  }
  return bits.ReadBits(5, &hrd->initial_cpb_removal_delay_length_minus1) &&
         bits.ReadBits(5, &hrd->cpb_removal_delay_length_minus1) &&
         bits.ReadBits(5, &hrd->dpb_output_delay_length_minus1) &&
         bits.ReadBits(5, &hrd->time_offset_length);
}

int ParsePrivateData::getBitrate(unsigned int* result) {
  if (!result)
    return -2;
  const uint32_t nal = PeakBitRate(nalHrd);
  const uint32_t vcl = PeakBitRate(vclHrd);
  *result = nal < vcl ? vcl : nal;
  return 0;
}

int ParsePrivateData::getVBV(unsigned int* result) {
  if (!result)
    return -2;
  const bool vclFaster = PeakBitRate(nalHrd) < PeakBitRate(vclHrd);
  *result = BufferSize(vclFaster ? vclHrd : nalHrd);
  return 0;
}
