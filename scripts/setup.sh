#!/usr/bin/env bash
# Installs what MKVSource needs on a Debian bookworm machine, as root.
# Idempotent: on a machine that has everything it only checks, and returns
# within a second. Extra Debian package names given as arguments are
# installed with the rest when missing.
# Every failure ends with one line on standard error: what failed; what to do.
set -eEuo pipefail

die() { echo "setup: $*" >&2; exit 1; }
# The last net under the explicit checks; a failing command substitution
# reports once, from the main shell.
trap '((BASH_SUBSHELL)) || die "line $LINENO of scripts/setup.sh failed; rerun it with bash -x to see why"' ERR

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
headers="$here/.deps/libwebm"
# Where set-up wrote a deb-src entry before it fetched through a throwaway
# configuration; that entry could clash with the machine's own.
old_src_list=/etc/apt/sources.list.d/mkvsource-src.sources
# Waits for another apt or dpkg run to finish instead of failing at once.
apt=(apt-get -q -o DPkg::Lock::Timeout=600)
work=  # the download folder, removed on exit

packages=(
  cmake g++ make pkg-config xz-utils dpkg-dev file
  libwebm1 libxml2-dev libboost-thread-dev libboost-dev
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  libcli11-dev nlohmann-json3-dev libmd-dev librsvg2-bin
  "$@"
)

as_root() { [[ $(id -u) -eq 0 ]] || die "$1 needs root; run this script as root"; }

refresh_lists() {
  "${apt[@]}" update >&2 || die "apt-get update failed; check the network and the sources in /etc/apt"
}

install_missing() {
  local missing=() p installed
  # One query for all: dpkg-query takes a while on a busy machine. It fails
  # when a package is unknown, which leaves that package missing.
  installed=$(dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' "${packages[@]}" 2>/dev/null) ||
    true
  for p in "${packages[@]}"; do
    [[ $'\n'$installed$'\n' == *$'\n'"ii  ${p%%:*}"$'\n'* ]] || missing+=("$p")
  done
  ((${#missing[@]})) || return 0
  as_root "installing ${missing[*]}"
  echo "setup: installing ${missing[*]}" >&2
  refresh_lists
  DEBIAN_FRONTEND=noninteractive "${apt[@]}" install -y --no-install-recommends "${missing[@]}" >&2 ||
    die "installing ${missing[*]} failed; check the package names and apt's messages above"
}

# The deb-src entries for the Debian archives that the machine's apt uses
# for this release, as apt itself reads its sources.
source_entries() {
  local codename archives rc=0
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}") ||
    die "cannot read /etc/os-release; this set-up is for Debian bookworm"
  [[ -n $codename ]] || die "/etc/os-release names no release; this set-up is for Debian bookworm"
  archives=$(bash "$here/scripts/apt_archives.sh" /etc/apt "$codename") || rc=$?
  # It has said what to add.
  ((rc != 1)) || exit 1
  ((rc == 0)) || die "apt cannot read the sources in /etc/apt; mend the entry that apt's error above names"
  awk '{print "deb-src " $1 " " $2 " main"}' <<< "$archives"
}

# Fetches the source package of exactly the installed version and keeps
# mkvparser's header and source under .deps/. apt works from a throwaway
# configuration in the download folder that lists only deb-src entries for
# the machine's archives: /etc/apt stays as it was, and no entry of ours can
# clash with one of the machine's (apt refuses two Signed-By values for one
# archive). The keys are the machine's trusted ones, which hold Debian's.
fetch_mkvparser() {
  local upstream tree dsc_version own
  work=$(mktemp -d) || die "cannot make a temporary folder; check TMPDIR and free space"
  trap 'rm -rf "$work"' EXIT
  # apt downloads as its own unprivileged user.
  chmod 755 "$work"
  mkdir -p "$work/apt/parts" "$work/apt/lists/partial" "$work/apt/cache/archives/partial" "$work/src" &&
    chmod 777 "$work/src" && source_entries > "$work/apt/sources.list" ||
    die "cannot write the apt configuration in $work; check free space in ${TMPDIR:-/tmp}"
  own=(-o Dir::Etc::SourceList="$work/apt/sources.list" -o Dir::Etc::SourceParts="$work/apt/parts"
       -o Dir::State::Lists="$work/apt/lists" -o Dir::Cache="$work/apt/cache")
  # An archive without sources (a vendor's, say) fails the update, and an
  # unreachable one only warns; what counts is whether libwebm's source came.
  "${apt[@]}" "${own[@]}" update >&2 || true
  apt-cache "${own[@]}" showsrc --only-source libwebm 2>/dev/null | grep -x "Version: $version" > /dev/null ||
    die "no archive in /etc/apt gave apt the source of libwebm $version; check the network if apt failed above, else run apt-get update && apt-get install libwebm1 and set-up again"
  (cd "$work/src" && "${apt[@]}" "${own[@]}" source --download-only --only-source "libwebm=$version" >&2) ||
    die "downloading the source package libwebm $version failed; check the network and apt's messages above"
  dsc_version=$(awk '/^Version:/ {print $2; exit}' "$work"/src/libwebm_*.dsc) ||
    die "the download of libwebm $version has no readable .dsc; run set-up again"
  [[ $dsc_version == "$version" ]] ||
    die "installed libwebm1 is $version but its source package is $dsc_version; run apt-get update and set-up again"
  upstream=${version%-*}
  tar -C "$work/src" -xf "$work/src/libwebm_${upstream}.orig.tar.xz" ||
    die "cannot unpack libwebm_${upstream}.orig.tar.xz; check free space in ${TMPDIR:-/tmp}"
  tree="$work/src/libwebm-$upstream"
  [[ -f $tree/mkvparser/mkvparser.h && -f $tree/mkvparser/mkvparser.cc &&
     -f $tree/common/webmids.h && -f $tree/LICENSE.TXT ]] ||
    die "libwebm $version lacks mkvparser/mkvparser.h, .cc, common/webmids.h or LICENSE.TXT; report its version to the project"
  # The fuzz build compiles the parser, which takes its element ids from common/.
  rm -rf "$headers" && mkdir -p "$headers/mkvparser" "$headers/common" &&
    cp "$tree/mkvparser/mkvparser.h" "$tree/mkvparser/mkvparser.cc" "$headers/mkvparser/" &&
    cp "$tree/common/webmids.h" "$headers/common/" &&
    cp "$tree/LICENSE.TXT" "$headers/" && echo "$version" > "$headers/VERSION" ||
    die "cannot write $headers; check that the project folder is writable"
  echo "setup: mkvparser of libwebm $version in $headers" >&2
}

if [[ -f $old_src_list ]]; then
  as_root "removing $old_src_list"
  rm -f "$old_src_list" || die "cannot remove $old_src_list; remove it by hand"
  echo "setup: removed $old_src_list, left by an earlier set-up; it could clash with the machine's own sources" >&2
fi
install_missing
version=$(dpkg-query -W -f='${Version}' libwebm1) ||
  die "dpkg does not list libwebm1 although it was installed; run: apt-get install --reinstall libwebm1"

# mkvparser's headers are not in Debian's libwebm-dev; they come from the
# source package of exactly the installed library's version.
kept=$(cat "$headers/VERSION" 2>/dev/null) || kept=
if [[ $kept == "$version" && -f $headers/mkvparser/mkvparser.h &&
      -f $headers/mkvparser/mkvparser.cc && -f $headers/common/webmids.h ]]; then
  exit 0
fi
as_root "fetching mkvparser of libwebm $version"
fetch_mkvparser
