#!/usr/bin/env bash
# Installs what is missing, builds, and plays a file through the plug-in
# (the bundled sample unless one is given). Run as root on Debian bookworm.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$here/scripts/setup.sh"
bash "$here/scripts/build.sh" "$here/build" -DMKVSOURCE_TESTS=OFF
exec "$here/build/bin/kvl-play" "${@:-$here/samples/sample.mkv}"
