#!/usr/bin/env bash
# Configures and builds one tree, keeping the compiler's chatter in
# DIR/build.log unless the build fails.
# Usage: build.sh DIR [cmake options...] [--target NAME...]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
dir=$1
shift
options=()
targets=()
while (($#)); do
  if [[ $1 == --target ]]; then
    targets+=(--target "$2")
    shift 2
  else
    options+=("$1")
    shift
  fi
done
mkdir -p "$dir"
echo "build: $dir" >&2
if ! { cmake -S "$here" -B "$dir" -DMKVSOURCE_WERROR=ON "${options[@]}" &&
       cmake --build "$dir" -j "$(nproc)" "${targets[@]}"; } > "$dir/build.log" 2>&1; then
  tail -n 40 "$dir/build.log" >&2
  echo "build: failed, see $dir/build.log" >&2
  exit 1
fi
