#!/usr/bin/env bash
# Configures and builds one tree, keeping the compiler's chatter in
# DIR/build.log unless the build fails. Usage: build.sh DIR [cmake options...]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
dir=$1
shift
mkdir -p "$dir"
echo "build: $dir" >&2
if ! { cmake -S "$here" -B "$dir" -DMKVSOURCE_WERROR=ON "$@" &&
       cmake --build "$dir" -j "$(nproc)"; } > "$dir/build.log" 2>&1; then
  tail -n 40 "$dir/build.log" >&2
  echo "build: failed, see $dir/build.log" >&2
  exit 1
fi
