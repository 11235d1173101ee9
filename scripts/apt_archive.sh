#!/usr/bin/env bash
# Prints the archive that a machine's apt sources name for a suite, as
# "URI" or "URI KEYRING" when the entry names its key, and exits 1 when no
# enabled entry serves the suite. Reads deb822 stanzas (sources.list.d/*.sources)
# and one-line entries (sources.list, sources.list.d/*.list), in apt's order.
# Usage: apt_archive.sh APT_DIR SUITE     (APT_DIR is /etc/apt on a machine)
set -euo pipefail
dir=$1
suite=$2

files=()
for file in "$dir/sources.list" "$dir"/sources.list.d/*.list "$dir"/sources.list.d/*.sources; do
  [[ -f $file ]] && files+=("$file")
done
((${#files[@]})) || exit 1

exec awk -v suite="$suite" '
  function has(list, word,    words, n, i) {
    n = split(list, words, /[ \t]+/)
    for (i = 1; i <= n; i++) if (words[i] == word) return 1
    return 0
  }
  function found(uri, keyring) {
    if (answer == "") answer = keyring ~ /^\// ? uri " " keyring : uri
  }
  function end_stanza() {
    if (types != "" && uris != "" && enabled != "no" && has(suites, suite)) {
      split(uris, first, /[ \t]+/)
      found(first[1], keyring)
    }
    types = uris = suites = enabled = keyring = ""
  }
  FNR == 1 { end_stanza(); deb822 = FILENAME ~ /\.sources$/ }
  { sub(/#.*/, ""); sub(/^[ \t]+/, ""); sub(/[ \t]+$/, "") }
  deb822 && $0 == "" { end_stanza(); next }
  deb822 {
    key = tolower($1); value = $0; sub(/^[^:]*:[ \t]*/, "", value)
    if (key == "types:") types = value
    else if (key == "uris:") uris = value
    else if (key == "suites:") suites = value
    else if (key == "enabled:") enabled = tolower(value)
    else if (key == "signed-by:") keyring = value
    next
  }
  $1 == "deb" || $1 == "deb-src" {
    line = $0; keyring = ""
    if (match(line, /\[[^]]*\]/)) {
      options = substr(line, RSTART + 1, RLENGTH - 2)
      line = substr(line, 1, RSTART - 1) " " substr(line, RSTART + RLENGTH)
      if (match(options, /signed-by=[^ \t]+/)) keyring = substr(options, RSTART + 10, RLENGTH - 10)
    }
    split(line, field, /[ \t]+/)
    if (field[3] == suite) found(field[2], keyring)
    keyring = ""
  }
  END { end_stanza(); if (answer == "") exit 1; print answer }
' "${files[@]}"
