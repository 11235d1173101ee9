#include "host/play/avc_facts.h"

#include <cstdint>
#include <memory>

#include "codec/parse_private_data.h"

namespace kvlhost {
namespace {

uint32_t Clamped(uint64_t value) {
  return value > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(value);
}

// Profiles whose sequence parameter sets state chroma_format_idc; the others
// are 4:2:0.
bool StatesChromaFormat(unsigned int profile) {
  switch (profile) {
    case 44: case 83: case 86: case 100: case 110: case 118:
    case 122: case 128: case 134: case 135: case 138: case 139: case 244:
      return true;
    default:
      return false;
  }
}

// Cropping offsets count in units that depend on the chroma sampling and on
// whether pictures are frames or fields.
void Crop(const ParsePrivateData& sps, AvcFacts& facts) {
  const unsigned int chroma = StatesChromaFormat(sps.profile_idc) ? sps.chroma_format_idc : 1;
  const bool monochrome = chroma == 0 || sps.separate_colour_plane_flag;
  const uint64_t subWidth = monochrome || chroma == 3 ? 1 : 2;
  const uint64_t subHeight = monochrome || chroma != 1 ? 1 : 2;
  const uint64_t unitX = subWidth;
  const uint64_t unitY = subHeight * (2 - sps.frame_mbs_only_flag);
  const uint64_t cropX = sps.frame_cropping_flag
      ? unitX * (uint64_t{sps.frame_crop_left_offset} + sps.frame_crop_right_offset) : 0;
  const uint64_t cropY = sps.frame_cropping_flag
      ? unitY * (uint64_t{sps.frame_crop_top_offset} + sps.frame_crop_bottom_offset) : 0;
  facts.croppedWidth = cropX < facts.codedWidth ? Clamped(facts.codedWidth - cropX) : 0;
  facts.croppedHeight = cropY < facts.codedHeight ? Clamped(facts.codedHeight - cropY) : 0;
}

}  // namespace

std::optional<AvcFacts> ReadAvcFacts(const std::vector<uint8_t>& codecPrivate) {
  // The analyser wants a writable buffer.
  std::vector<uint8_t> data = codecPrivate;
  auto sps = std::make_unique<ParsePrivateData>();
  if (data.empty() ||
      sps->Init(data.data(), static_cast<unsigned int>(data.size())) != 0) {
    return std::nullopt;
  }
  AvcFacts facts;
  facts.profile = sps->profile_idc;
  facts.level = sps->level_idc;
  facts.codedWidth = Clamped((uint64_t{sps->pic_width_in_mbs_minus1} + 1) * 16);
  facts.codedHeight = Clamped((2 - uint64_t{sps->frame_mbs_only_flag}) *
                              (uint64_t{sps->pic_height_in_map_units_minus1} + 1) * 16);
  Crop(*sps, facts);
  facts.hrd = sps->nal_hrd_parameters_present_flag || sps->vcl_hrd_parameters_present_flag;
  if (facts.hrd) {
    sps->getBitrate(&facts.peakBitrate);
    sps->getVBV(&facts.bufferSize);
  }
  return facts;
}

}  // namespace kvlhost
