#ifndef CODEC_PARSE_PRIVATE_DATA_H_
#define CODEC_PARSE_PRIVATE_DATA_H_

#include <cstdint>

class AVCBitCursor;

// The sequence parameter set of an AVC track's CodecPrivate (an
// AVCDecoderConfigurationRecord), with its VUI and HRD parameters, as one flat
// record named after the H.264 syntax elements. Each value is cut to the width
// of its field. The record starts zero-filled and owns nothing; only
// AVCParseSPS writes it.
class ParsePrivateData {
 public:
  struct HRDParameters {
    uint8_t cpb_cnt_minus1 = 0;
    uint8_t bit_rate_scale = 0;
    uint8_t cpb_size_scale = 0;
    uint32_t bit_rate_value_minus1[32] = {};
    uint32_t cpb_size_value_minus1[32] = {};
    uint8_t cbr_flag[32] = {};
    uint8_t initial_cpb_removal_delay_length_minus1 = 0;
    uint8_t cpb_removal_delay_length_minus1 = 0;
    uint8_t dpb_output_delay_length_minus1 = 0;
    uint8_t time_offset_length = 0;
  };

  // Parses every sequence parameter set of the record in turn, so the last
  // one decides. -2 for null data or fewer than 6 bytes; -1, with the record
  // unchanged, for data holding a start code pattern (0, 0, below 3) or an
  // entry that is empty or runs past `size`; else 0.
  int Init(unsigned char* data, unsigned int size);

  // Clears the record and reads one sequence parameter set: the bytes behind
  // its NAL header, without emulation prevention bytes. Reads stay within
  // `size`: a set cut short, or one with an HRD set of more than 32 entries,
  // keeps the fields read before that point. Always 0.
  int AVCParseSPS(unsigned char* data, unsigned int size);

  // The peak bit rate in bits per second: the greater of the two HRD sets'
  // first entries, an absent set counting as zeros. -2 for a null `result`.
  int getBitrate(unsigned int* result);
  // The coded picture buffer size in bits of the set with the greater bit
  // rate, NAL on a tie. -2 for a null `result`.
  int getVBV(unsigned int* result);

  uint8_t profile_idc = 0;
  uint8_t constraint_flags = 0;
  uint8_t level_idc = 0;
  uint8_t seq_parameter_set_id = 0;
  uint8_t chroma_format_idc = 0;
  uint8_t separate_colour_plane_flag = 0;
  uint8_t bit_depth_luma_minus8 = 0;
  uint8_t bit_depth_chroma_minus8 = 0;
  uint8_t qpprime_y_zero_transform_bypass_flag = 0;
  uint8_t seq_scaling_matrix_present_flag = 0;
  uint8_t seq_scaling_list_present_flag[12] = {};
  uint8_t log2_max_frame_num_minus4 = 0;
  uint8_t pic_order_cnt_type = 0;
  uint8_t log2_max_pic_order_cnt_lsb_minus4 = 0;
  uint8_t delta_pic_order_always_zero_flag = 0;
  int32_t offset_for_non_ref_pic = 0;
  int32_t offset_for_top_to_bottom_field = 0;
  uint8_t num_ref_frames_in_pic_order_cnt_cycle = 0;
  int32_t offset_for_ref_frame[256] = {};
  uint8_t max_num_ref_frames = 0;
  uint8_t gaps_in_frame_num_value_allowed_flag = 0;
  uint32_t pic_width_in_mbs_minus1 = 0;
  uint32_t pic_height_in_map_units_minus1 = 0;
  uint8_t frame_mbs_only_flag = 0;
  uint8_t mb_adaptive_frame_field_flag = 0;
  uint8_t direct_8x8_inference_flag = 0;
  uint8_t frame_cropping_flag = 0;
  uint16_t frame_crop_left_offset = 0;
  uint16_t frame_crop_right_offset = 0;
  uint16_t frame_crop_top_offset = 0;
  uint16_t frame_crop_bottom_offset = 0;
  uint8_t vui_parameters_present_flag = 0;
  uint8_t aspect_ratio_info_present_flag = 0;
  uint8_t aspect_ratio_idc = 0;
  uint16_t sar_width = 0;
  uint16_t sar_height = 0;
  uint8_t overscan_info_present_flag = 0;
  uint8_t overscan_appropriate_flag = 0;
  uint8_t video_signal_type_present_flag = 0;
  uint8_t video_format = 0;
  uint8_t video_full_range_flag = 0;
  uint8_t colour_description_present_flag = 0;
  uint8_t colour_primaries = 0;
  uint8_t transfer_characteristics = 0;
  uint8_t matrix_coefficients = 0;
  uint8_t chroma_loc_info_present_flag = 0;
  uint8_t chroma_sample_loc_type_top_field = 0;
  uint8_t chroma_sample_loc_type_bottom_field = 0;
  uint8_t timing_info_present_flag = 0;
  uint32_t num_units_in_tick = 0;
  uint32_t time_scale = 0;
  uint8_t fixed_frame_rate_flag = 0;
  uint8_t nal_hrd_parameters_present_flag = 0;
  HRDParameters nalHrd;
  uint8_t vcl_hrd_parameters_present_flag = 0;
  HRDParameters vclHrd;
  uint8_t pic_struct_present_flag = 0;
  uint8_t bitstream_restriction_flag = 0;
  uint8_t motion_vectors_over_pic_boundaries_flag = 0;
  uint8_t max_bytes_per_pic_denom = 0;
  uint8_t max_bits_per_mb_denom = 0;
  uint8_t log2_max_mv_length_horizontal = 0;
  uint8_t log2_max_mv_length_vertical = 0;
  uint8_t max_num_reorder_frames = 0;
  uint8_t max_dec_frame_buffering = 0;

 private:
  // Each step reads its part of the set and answers false when the set ends
  // (or, for an HRD set, holds more entries than the tables) before it does.
  bool ReadProfileAndChroma(AVCBitCursor& bits);
  bool ReadPictureOrder(AVCBitCursor& bits);
  bool ReadFrameGeometry(AVCBitCursor& bits);
  bool ReadVUI(AVCBitCursor& bits);
  bool ReadVideoSignalType(AVCBitCursor& bits);
  bool ReadTimingInfo(AVCBitCursor& bits);
  bool ReadBitstreamRestriction(AVCBitCursor& bits);
  static bool ReadHRD(AVCBitCursor& bits, HRDParameters* hrd);
};

#endif  // CODEC_PARSE_PRIVATE_DATA_H_
