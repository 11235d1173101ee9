#!/usr/bin/env bash
# Times a full play by kvl-play against reading the file once (cat, the
# floor) and ffmpeg's copy of every stream to null, interleaved: each round
# runs the three in turn, so load from elsewhere on the machine falls on all
# of them alike. Prints each one's median wall and CPU (user + system) time
# and kvl-play's ratios of both: on a busy machine a run that takes longer
# is also preempted more often, so the CPU ratio is the steadier one. Then
# one more run of each for its peak resident memory.
#   benchmarks/compare.sh build/bin/kvl-play FILE [ROUNDS]
set -euo pipefail
if [[ $# -lt 2 ]]; then
  echo "usage: $0 KVL_PLAY FILE [ROUNDS]" >&2
  exit 2
fi
play=$1 file=$2 rounds=${3:-15}
source "$(dirname "${BASH_SOURCE[0]}")/timing.sh"

timing=$(mktemp)
peak=$(mktemp)
trap 'rm -f "$timing" "$peak"' EXIT

# Runs one of the three under the command given after its name.
run() {
  local name=$1
  shift
  case $name in
    cat) "$@" cat "$file" > /dev/null ;;
    play) "$@" "$play" "$file" > /dev/null 2>&1 ;;
    ffmpeg) "$@" ffmpeg -nostdin -v error -i "$file" -map 0 -c copy -f null - ;;
  esac
}
measured=(/usr/bin/time -f %M -o "$peak" --)

names=(cat play ffmpeg)
declare -A wall cpu
for name in "${names[@]}"; do run "$name" perf_stat "$timing"; done  # warm the page cache
for ((round = 0; round < rounds; ++round)); do
  for name in "${names[@]}"; do
    run "$name" perf_stat "$timing"
    read -r w c < <(perf_times "$timing")
    wall[$name]+="$w "
    cpu[$name]+="$c "
  done
done

declare -A wallMedian cpuMedian
for name in "${names[@]}"; do
  wallMedian[$name]=$(median "${wall[$name]}")
  cpuMedian[$name]=$(median "${cpu[$name]}")
  printf '%-8s median wall %.4f s, cpu %.4f s over %d rounds\n' \
    "$name" "${wallMedian[$name]}" "${cpuMedian[$name]}" "$rounds"
done
ratios() {
  awk -v what="$1" -v p="$2" -v c="$3" -v f="$4" \
    'BEGIN { printf "%s: kvl-play / cat %.2fx, kvl-play / ffmpeg %.2fx\n", what, p / c, p / f }'
}
ratios wall "${wallMedian[play]}" "${wallMedian[cat]}" "${wallMedian[ffmpeg]}"
ratios cpu "${cpuMedian[play]}" "${cpuMedian[cat]}" "${cpuMedian[ffmpeg]}"
for name in "${names[@]}"; do
  run "$name" "${measured[@]}"
  printf '%-8s peak memory %.1f MiB\n' "$name" "$(awk '{ print $1 / 1024 }' "$peak")"
done
