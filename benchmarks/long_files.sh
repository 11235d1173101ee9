#!/usr/bin/env bash
# Measures kvl-play beside ffmpeg and GStreamer on long files, each file as
# it is and as its copy with unknown sizes (make_unknown_size: the layout a
# live recording leaves). One row a file, layout and tool:
#   play        a full play: median wall and CPU (user + system) time
#   peak        the full play's peak resident memory (/usr/bin/time -v)
#   open        the start, the probe and the first chunk of each stream
#               (kvl-play --speed -1000; ffprobe reading one packet)
#   seek        the open, a seek of every stream to 10 s before the end and
#               the play from there (kvl-play --seek; ffmpeg -ss)
#   reads       read calls and bytes on the file's descriptor (strace), of
#               the open and of the full play
# Timed runs take turns round after round, after one round that warms the
# page cache, so load from elsewhere falls on all of them alike. A tool or
# measure that is missing shows as "-".
#   benchmarks/long_files.sh BIN_DIR ROUNDS FILE...
# BIN_DIR holds kvl-play and make_unknown_size (build/bin); the copies go to
# a temporary folder under ${TMPDIR:-/tmp}, as large as the files.
set -euo pipefail
if [[ $# -lt 3 ]]; then
  echo "usage: $0 BIN_DIR ROUNDS FILE..." >&2
  exit 2
fi
bin=$1 rounds=$2
shift 2
source "$(dirname "${BASH_SOURCE[0]}")/timing.sh"
for needed in perf /usr/bin/time "$bin/kvl-play" "$bin/make_unknown_size"; do
  command -v "$needed" > /dev/null || { echo "$0: $needed is missing" >&2; exit 2; }
done
have() { command -v "$1" > /dev/null; }
have strace || echo "strace is missing: no read counts" >&2

work=$(mktemp -d "${TMPDIR:-/tmp}/long_files.XXXXXX")
trap 'rm -rf "$work"' EXIT
timing=$work/timing

# command_for TOOL MEASURE FILE: sets cmd to the command line, or empty where
# the tool can't make the measure or isn't installed.
command_for() {
  local tool=$1 measure=$2 file=$3
  cmd=()
  case $tool/$measure in
    kvl-play/play) cmd=("$bin/kvl-play" "$file") ;;
    kvl-play/open) cmd=("$bin/kvl-play" --speed -1000 "$file") ;;
    kvl-play/seek) cmd=("$bin/kvl-play" --seek "$seek_ticks" "$file") ;;
    ffmpeg/play) cmd=(ffmpeg -nostdin -v error -i "$file" -map 0 -c copy -f null -) ;;
    ffmpeg/open) cmd=(ffprobe -v error -read_intervals %+#1 -show_entries packet=pts "$file") ;;
    ffmpeg/seek) cmd=(ffmpeg -nostdin -v error -ss "$seek_seconds" -i "$file" -map 0 -c copy
                      -f null -) ;;
    gstreamer/play) cmd=(gst-launch-1.0 -q filesrc "location=$file" ! matroskademux name=d
                         d. ! queue ! fakesink d. ! queue ! fakesink) ;;
  esac
  if [[ ${#cmd[@]} -gt 0 && $tool != kvl-play ]] && ! have "${cmd[0]}"; then cmd=(); fi
}

# reads_of FILE COMMAND...: "CALLS MB" of read and pread64 calls on FILE,
# every thread's apart (-ff) so that no call is cut in two in the log.
reads_of() {
  local file=$1
  shift
  rm -f "$work"/strace.*
  strace -ff -y -qq -e trace=read,pread64 -o "$work/strace" "$@" > /dev/null 2>&1
  cat "$work"/strace.* | awk -v f="<$file>," '
    /^p?read(64)?\(/ && index($0, f) { n = split($0, r, " = "); calls++; bytes += r[n] }
    END { printf "%d %.2f\n", calls, bytes / 1e6 }'
}

tools=(kvl-play ffmpeg gstreamer)
measures=(play open seek)

# measure_file FILE LABEL LAYOUT: the rows of one file in one layout.
measure_file() {
  local file=$1 label=$2 layout=$3 tool measure round w c
  local ticks seconds
  ticks=$("$bin/kvl-play" --json --speed -1000 "$file" 2> /dev/null |
          grep -o '"duration": *[0-9]*' | head -n 1 | grep -o '[0-9]*$')
  seconds=$(ffprobe -v error -show_entries format=duration -of csv=p=0 "$file")
  seek_ticks=$(awk -v t="$ticks" -v s="$seconds" 'BEGIN { printf "%d", t - 10 * t / s }')
  seek_seconds=$(awk -v s="$seconds" 'BEGIN { print s - 10 }')
  declare -A wall=() cpu=()
  for ((round = -1; round < rounds; ++round)); do
    for measure in "${measures[@]}"; do
      for tool in "${tools[@]}"; do
        command_for "$tool" "$measure" "$file"
        [[ ${#cmd[@]} -gt 0 ]] || continue
        perf_stat "$timing" "${cmd[@]}"
        ((round >= 0)) || continue
        read -r w c < <(perf_times "$timing")
        wall[$tool/$measure]+="$w " cpu[$tool/$measure]+="$c "
      done
    done
  done
  for tool in "${tools[@]}"; do
    local row="| $label | $layout | $tool |"
    for measure in "${measures[@]}"; do
      if [[ -n ${wall[$tool/$measure]:-} ]]; then
        row+=$(printf ' %.3f s, %.3f s |' "$(median "${wall[$tool/$measure]}")" \
                 "$(median "${cpu[$tool/$measure]}")")
      else
        row+=" - |"
      fi
      [[ $measure == play ]] || continue
      command_for "$tool" play "$file"
      if [[ ${#cmd[@]} -gt 0 ]]; then
        /usr/bin/time -v -o "$work/time" "${cmd[@]}" > /dev/null 2>&1
        row+=$(awk '/Maximum resident/ { printf " %.1f MiB |", $NF / 1024 }' "$work/time")
      else
        row+=" - |"
      fi
    done
    for measure in open play; do
      command_for "$tool" "$measure" "$file"
      if [[ ${#cmd[@]} -gt 0 ]] && have strace; then
        row+=$(reads_of "$file" "${cmd[@]}" | awk '{ printf " %d, %.2f MB |", $1, $2 }')
      else
        row+=" - |"
      fi
    done
    echo "$row"
  done
}

echo "Medians of $rounds rounds, wall and CPU time; $(date -u +%F), load average" \
  "$(cut -d' ' -f1-3 /proc/loadavg)"
echo
echo "| File | Sizes | Tool | Play | Peak memory | Open + first chunk | Seek 10 s before" \
  "the end + play | Reads, open | Reads, play |"
echo "|---|---|---|---|---|---|---|---|---|"
for file in "$@"; do
  file=$(realpath "$file")
  label=$(basename "$file")
  copy=$work/unknown-$label
  "$bin/make_unknown_size" "$file" "$copy"
  measure_file "$file" "$label" known
  measure_file "$copy" "$label" unknown
  rm -f "$copy"
done
