#!/usr/bin/env bash
# Builds the libFuzzer target alone in build-fuzz/ (clang, ASan, UBSan, the
# parser compiled in) and runs it in one process for SECONDS with a fixed
# SEED over the committed media, the reproducers and, when it is there, the
# public corpus beside the project. Any crash, leak, sanitizer report or
# timeout fails the run; the input is kept in build-fuzz/findings/. Run as
# root on Debian bookworm the first time, to install clang.
# Usage: fuzz.sh [SECONDS [SEED]]    (defaults: 60 s, seed 1)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=${1:-60}
seed=${2:-1}
dir="$here/build-fuzz"

# clang and its fuzzer runtime are installed for this build only.
bash "$here/scripts/setup.sh" clang libclang-rt-14-dev
# Warnings are gcc's to judge: clang's own set doesn't gate this build.
bash "$here/scripts/build.sh" "$dir" --target mkvsource_fuzz -DMKVSOURCE_FUZZ=ON \
  -DMKVSOURCE_WERROR=OFF -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14

seeds=("$here/tests/fuzz/reproducers" "$here/tests/data/media" "$here/tests/data/avc"
       "$here/samples")
if [[ -d "$here/../shared/corpus/libwebm" ]]; then
  seeds+=("$here/../shared/corpus/libwebm")
fi
mkdir -p "$dir/corpus" "$dir/findings"
log="$dir/fuzz.log"
echo "fuzz: ${seconds} s, seed $seed, log in $log" >&2
# The first folder takes what the run finds new; the others are only read.
# The plug-in's own lines are closed off (-close_fd_mask); libFuzzer's stay.
if ! "$dir/bin/mkvsource_fuzz" -seed="$seed" -max_total_time="$seconds" -timeout=20 \
     -close_fd_mask=3 -print_final_stats=1 -dict="$here/tests/fuzz/matroska.dict" \
     -artifact_prefix="$dir/findings/" "$dir/corpus" "${seeds[@]}" > "$log" 2>&1; then
  tail -n 60 "$log" >&2
  echo "fuzz: a finding, see $log and $dir/findings/" >&2
  exit 1
fi
grep -E '^#[0-9]+.*(DONE|cov:)' "$log" | tail -n 1 >&2
