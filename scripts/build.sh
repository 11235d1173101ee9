#!/usr/bin/env bash
# Configures and builds one tree. Usage: build.sh DIR [cmake options...]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
dir=$1
shift
cmake -S "$here" -B "$dir" -DMKVSOURCE_WERROR=ON "$@" > /dev/null
cmake --build "$dir" -j "$(nproc)"
