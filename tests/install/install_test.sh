#!/usr/bin/env bash
# The project as a user gets it, played from a temporary folder with no
# environment that points at the build: "prefix" installs the build there,
# "package" makes the Debian package, unpacks it there and checks that its
# dependencies came from the libraries it links.
# Usage: install_test.sh prefix|package BUILD_DIR SAMPLE
set -uo pipefail
form=$1 build=$2 sample=$3
fail() { echo "install_$form: $*"; exit 1; }
tmp=$(mktemp -d) || fail "no temporary folder"
trap 'rm -rf "$tmp"' EXIT

# Plays the sample with the kvl-play under ROOT, which must load the module
# and the engine library under ROOT too.
play_from() {
  local root=$1 version report
  local versions=$'^MKVSource [0-9.]+\nlibwebm mkvparser [0-9]+(\\.[0-9]+){3} \\(/.*/libwebm\\.so\\.1.*\\)$'
  version=$(env -u LD_LIBRARY_PATH "$root/bin/kvl-play" --version) || fail "--version failed"
  [[ $version =~ $versions ]] || fail "--version printed: $version"
  [[ $(ldd "$root/bin/kvl-play") == *"libKVL_Core.so => $root/"* ]] ||
    fail "kvl-play does not take the engine library from $root"
  report=$(cd / && env -u LD_LIBRARY_PATH "$root/bin/kvl-play" "$sample") || fail "playing failed"
  [[ $report == *"module: $root/"*"/MKVSource.so"* ]] || fail "not the module of $root: $report"
}

case $form in
  prefix)
    cmake --install "$build" --prefix "$tmp" > /dev/null || fail "cmake --install failed"
    play_from "$tmp"
    ;;
  package)
    cpack --config "$build/CPackConfig.cmake" -G DEB -B "$tmp" > "$tmp/cpack.log" 2>&1 ||
      fail "cpack failed: $(tail -n 20 "$tmp/cpack.log")"
    debs=("$tmp"/*.deb)
    depends=$(dpkg-deb -f "${debs[0]}" Depends) || fail "no package made"
    [[ $depends == *libwebm1* && $depends == *libxml2* ]] || fail "Depends: $depends"
    dpkg-deb -x "${debs[0]}" "$tmp/root" || fail "cannot unpack ${debs[0]}"
    play_from "$tmp/root/usr"
    ;;
esac
