#!/usr/bin/env bash
# Installs what MKVSource needs on a Debian bookworm machine, as root.
# Idempotent: on a machine that has everything it only checks, and returns
# within a second.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
deps="$here/.deps"
headers="$deps/libwebm"

die() { echo "setup: $*" >&2; exit 1; }

packages=(
  cmake g++ make pkg-config xz-utils
  libwebm1 libxml2-dev libboost-thread-dev libboost-dev
  googletest libgtest-dev libbenchmark-dev
  libcli11-dev nlohmann-json3-dev libmd-dev
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done

if ((${#missing[@]})); then
  [[ $(id -u) -eq 0 ]] || die "run as root to install: ${missing[*]}"
  echo "setup: installing ${missing[*]}" >&2
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q >&2
  apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
fi

# mkvparser's headers are not in Debian's libwebm-dev; they come from the
# source package of exactly the installed library's version.
version=$(dpkg-query -W -f='${Version}' libwebm1)
if [[ -f "$headers/VERSION" && $(cat "$headers/VERSION") == "$version" &&
      -f "$headers/mkvparser/mkvparser.h" && -f "$headers/common/webmids.h" ]]; then
  exit 0
fi

[[ $(id -u) -eq 0 ]] || die "run as root to fetch the mkvparser headers of libwebm $version"

src_list=/etc/apt/sources.list.d/mkvsource-src.sources
if ! grep -rqs '^Types:.*deb-src' /etc/apt/sources.list.d/ &&
   ! grep -qs '^deb-src' /etc/apt/sources.list; then
  # Use the archive that this machine's own apt sources name.
  archive=$(grep -rhs '^URIs:' /etc/apt/sources.list.d/*.sources | grep -v security |
            awk '{print $2}' | head -n 1)
  [[ -n "$archive" ]] || archive=$(grep -hs '^deb ' /etc/apt/sources.list |
            grep -v security | awk '{print $2}' | head -n 1)
  [[ -n "$archive" ]] || die "no Debian archive found in the apt sources"
  cat > "$src_list" <<SRC
Types: deb-src
URIs: $archive
Suites: bookworm
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
SRC
  apt-get update -q >&2
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 777 "$work"
(cd "$work" && apt-get source -q --download-only "libwebm=$version" >&2) ||
  die "the source package libwebm $version is not reachable through apt"

dsc_version=$(awk '/^Version:/ {print $2; exit}' "$work"/libwebm_*.dsc)
[[ "$dsc_version" == "$version" ]] ||
  die "installed libwebm1 is $version but the source package is $dsc_version"

upstream=${version%-*}
tar -C "$work" -xf "$work/libwebm_${upstream}.orig.tar.xz"
tree="$work/libwebm-$upstream"
[[ -f "$tree/mkvparser/mkvparser.h" ]] || die "no mkvparser/mkvparser.h in libwebm $version"

rm -rf "$headers"
mkdir -p "$headers/mkvparser"
cp "$tree/mkvparser/mkvparser.h" "$headers/mkvparser/"
# The fuzz build compiles the parser, which takes its element ids from here.
mkdir -p "$headers/common"
cp "$tree/common/webmids.h" "$headers/common/"
cp "$tree/LICENSE.TXT" "$headers/" 2>/dev/null || true
echo "$version" > "$headers/VERSION"
echo "setup: mkvparser headers of libwebm $version in $headers" >&2
