# Turns ffmpeg's trace_headers log into sps.FIELD=VALUE lines for the first
# sequence parameter set. The constraint flags and the reserved bits become
# the one byte constraint_flags; the NAL header and trailing bits are left
# out. The list ends before low_delay_hrd_flag, which our record doesn't
# read, so that no field behind it is compared.
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
  print "sps." name "=" value
}
