#!/usr/bin/env bash
# Makes the small H.264 Matroska files that the codec tests read, from
# synthetic sources (lavfi testsrc) with ffmpeg and libx264, three frames
# each. The outputs are committed; the tests never run this script.
#
# Beside each NAME.mkv, NAME.txt holds key=value lines:
#   profile, level, width, height, coded_width, coded_height,
#   sample_aspect_ratio   as ffprobe reports them;
#   hrd_bit_rate, hrd_cpb_size
#                         the peak rate and buffer in bits asked of the
#                         encoder, for files with HRD parameters (chosen so
#                         that the SPS holds them exactly);
#   sps.FIELD             the sequence parameter set as ffmpeg's
#                         trace_headers reads it, without the NAL header,
#                         the constraint flags one by one and the trailing
#                         bits. With HRD parameters the list ends before
#                         low_delay_hrd_flag, which our record doesn't read,
#                         so the fields behind it are not comparable.
#
# Run from anywhere: bash tests/data/avc/make_avc_files.sh
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")"
ff=(ffmpeg -nostdin -hide_banner -loglevel error -y)
out_flags=(-map_metadata -1 -fflags +bitexact -flags:v +bitexact)

# Turns ffmpeg's trace_headers log into sps.FIELD=VALUE lines for the first
# sequence parameter set, named as in our record: the constraint flags and
# the reserved bits become the one byte constraint_flags, HRD fields go under
# nalHrd. or vclHrd., and the NAL header and trailing bits are left out. The list ends before low_delay_hrd_flag, which our record doesn't
# read, so that no field behind it is compared.
sps_fields='
/Sequence Parameter Set/ { inside = 1; next }
/Picture Parameter Set/ || /low_delay_hrd_flag/ { if (inside) exit }
!inside || !/^\[trace_headers/ { next }
{
  name = $5; value = $NF
  if (name ~ /^constraint_set[0-5]_flag$/) {
    flags += value * 2 ^ (7 - substr(name, 15, 1)); next
  }
  if (name == "reserved_zero_2bits") {
    print "sps.constraint_flags=" (flags + value); next
  }
  if (name ~ /^(forbidden_zero_bit|nal_ref_idc|nal_unit_type|rbsp_.*)$/) next
  if (name == "gaps_in_frame_num_allowed_flag")
    name = "gaps_in_frame_num_value_allowed_flag"
  if (name ~ /^(nal|vcl)_hrd_parameters_present_flag$/)
    set = substr(name, 1, 3) "Hrd."
  else if (name ~ /^(cpb_|bit_rate_|cbr_flag|initial_cpb_|dpb_output_|time_offset_)/)
    name = set name
  print "sps." name "=" value
}
'

# make NAME SIZE HRD_KBITS HRD_BUFFER_KBITS [ffmpeg output options...]
# HRD_KBITS 0 means a file without HRD parameters.
make() {
  local name=$1 size=$2 rate=$3 buffer=$4
  shift 4
  "${ff[@]}" -f lavfi -i "testsrc=size=$size:rate=25" -frames:v 3 \
    "$@" -c:v libx264 "${out_flags[@]}" "$name.mkv"
  {
    ffprobe -v error -select_streams v:0 -of default=nw=1 -show_entries \
      stream=profile,level,width,height,coded_width,coded_height,sample_aspect_ratio \
      "$name.mkv"
    if [ "$rate" != 0 ]; then
      echo "hrd_bit_rate=$((rate * 1000))"
      echo "hrd_cpb_size=$((buffer * 1000))"
    fi
    ffmpeg -nostdin -hide_banner -loglevel verbose -i "$name.mkv" -c copy \
        -bsf:v trace_headers -f null - 2>&1 | awk "$sps_fields"
  } > "$name.txt"
}

make baseline_l10 64x64 0 0 -pix_fmt yuv420p -profile:v baseline -level 1.0
# Cropped size, a SAR outside the table and every optional VUI field.
make main_l30_vui 72x40 0 0 -vf setsar=7/5 -pix_fmt yuv420p \
  -profile:v main -level 3.0 -x264-params \
  colorprim=bt709:transfer=bt709:colormatrix=bt709:videoformat=pal:fullrange=on:chromaloc=1:overscan=show
make high_l41_vbr_hrd 64x64 1024 2048 -pix_fmt yuv420p -profile:v high \
  -level 4.1 -x264-params nal-hrd=vbr:vbv-maxrate=1024:vbv-bufsize=2048
make high_l40_cbr_hrd 64x64 512 1024 -pix_fmt yuv420p -profile:v high \
  -level 4.0 -b:v 512k -x264-params nal-hrd=cbr:vbv-maxrate=512:vbv-bufsize=1024
# Field coding: frame_mbs_only_flag 0 and mb_adaptive_frame_field_flag.
make high10_l31_interlaced 64x64 0 0 -pix_fmt yuv420p10le -profile:v high10 \
  -level 3.1 -x264-params interlaced=1
# chroma_format_idc 3 brings separate_colour_plane_flag.
make high444_l20 64x64 0 0 -pix_fmt yuv444p -profile:v high444 -level 2.0
