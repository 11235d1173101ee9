#!/usr/bin/env bash
# Prints the archives whose main component a machine's apt sources use for a
# release and its companion suites (SUITE-updates, SUITE-security, ...), one
# "URI SUITE" a line in apt's order. When there are none it says, in set-up's
# one line, which entry to add, and exits 1.
# apt reads the sources itself: asked for the indexes it would fetch, it
# names them without fetching, so comments, disabled stanzas, options in
# brackets and both file formats are its parser's business, not ours.
# A source that apt refuses ends the run with apt's own error and exit code.
# Usage: apt_archives.sh APT_DIR SUITE     (APT_DIR is /etc/apt on a machine)
set -euo pipefail
dir=$1
suite=$2
lists=$(mktemp -d)
trap 'rm -rf "$lists"' EXIT
# An empty lists folder, so that apt names every index and not only those
# that changed since the machine's last update.
mkdir "$lists/partial"
uris=$(apt-get update --print-uris -o Dir::Etc::SourceList="$dir/sources.list" \
  -o Dir::Etc::SourceParts="$dir/sources.list.d" -o Dir::State::Lists="$lists")
archives=$(sed -n "s|^'\(.*\)/dists/\($suite\(-[^/]*\)\{0,1\}\)/main/[^/]*/.*|\1 \2|p" <<< "$uris" |
  awk '!seen[$0]++')
if [[ -z $archives ]]; then
  echo "setup: no apt source in $dir serves $suite main; add one, e.g. 'deb http://deb.debian.org/debian $suite main' to $dir/sources.list" >&2
  exit 1
fi
echo "$archives"
