#!/usr/bin/env bash
# Configures and builds one tree, keeping the compiler's chatter in
# DIR/build.log unless the build fails.
# Usage: build.sh DIR [--target NAME] [cmake options...]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
dir=$1
shift
target=()
if [[ ${1:-} == --target ]]; then
  target=(--target "$2")
  shift 2
fi
mkdir -p "$dir"
echo "build: $dir${target[*]:+ ${target[*]}}" >&2
if ! { cmake -S "$here" -B "$dir" -DMKVSOURCE_WERROR=ON "$@" &&
       cmake --build "$dir" -j "$(nproc)" "${target[@]}"; } > "$dir/build.log" 2>&1; then
  tail -n 40 "$dir/build.log" >&2
  echo "build: failed, see $dir/build.log" >&2
  exit 1
fi
