#!/usr/bin/env bash
# scripts/apt_archives.sh over fake /etc/apt folders, one row per layout of
# apt sources a bookworm machine has: the archives expected, sorted and
# joined by ';' ("-" for none), then FILE=CONTENT pairs. Where there are
# none, the entry that the advice names, added as it says, must be found.
set -uo pipefail
script=$1
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT

# The official container image's only source file: a comment in each stanza.
image='Types: deb\n# the archive as it stood on 2025-05-20\nURIs: http://deb.debian.org/debian\nSuites: bookworm bookworm-updates\nComponents: main\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg\n\nTypes: deb\n# the security archive as it stood on 2025-05-20\nURIs: http://deb.debian.org/debian-security\nSuites: bookworm-security\nComponents: main\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg'
image_archives='http://deb.debian.org/debian bookworm;http://deb.debian.org/debian bookworm-updates;http://deb.debian.org/debian-security bookworm-security'
# debootstrap's one line.
classic='deb http://deb.debian.org/debian bookworm main'
rows=(
  "$image_archives|sources.list.d/debian.sources=$image"
  "http://deb.debian.org/debian bookworm|sources.list=$classic"
  "$image_archives|sources.list=$classic|sources.list.d/debian.sources=$image"
  "http://m.example/debian bookworm|sources.list.d/m.sources=Types: deb deb-src\nURIs: http://m.example/debian\n# between two keys\nSuites: bookworm\nComponents: main contrib\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg"
  "http://ftp.de.debian.org/debian bookworm|sources.list=deb http://ftp.de.debian.org/debian bookworm main\ndeb-src http://ftp.de.debian.org/debian bookworm main"
  "https://b.example/debian bookworm|sources.list.d/a.sources=Types: deb\nURIs: https://a.example/debian\nSuites: bookworm\nComponents: main\nEnabled: no\n\nTypes: deb\nURIs: https://b.example/debian\nSuites: bookworm\nComponents: main"
  "https://mirror.example/debian bookworm|sources.list=deb [arch=amd64 signed-by=/k.gpg] https://mirror.example/debian/ bookworm main contrib\ndeb [ arch=amd64 ] http://c.example/debian bookworm contrib # not main"
  "-|sources.list=deb http://deb.debian.org/debian trixie main\n# deb http://deb.debian.org/debian bookworm main|sources.list.d/debian.sources=Types: deb\nURIs: http://deb.debian.org/debian\nSuites: bookworm\nComponents: main\nEnabled: no"
  "-|"
)

failures=0
fail() { echo "row $1: $2"; failures=$((failures + 1)); }
# Sets $answer and $rc (the script's, through pipefail).
archives() {
  answer=$(bash "$script" "$1" bookworm 2> "$1.err" | sort | paste -sd ';')
  rc=$?
}

for i in "${!rows[@]}"; do
  IFS='|' read -r -a parts <<< "${rows[$i]}"
  apt="$tmp/$i"
  mkdir -p "$apt/sources.list.d"
  for file in "${parts[@]:1}"; do
    [[ -n $file ]] && printf '%b\n' "${file#*=}" > "$apt/${file%%=*}"
  done
  archives "$apt"
  [[ ${answer:--} == "${parts[0]}" && $rc -eq $([[ -n $answer ]]; echo $?) ]] ||
    fail "$i" "expected '${parts[0]}', got '$answer' (exit $rc)"
  [[ -z $answer ]] || continue
  # The advice, one line, followed to the letter.
  advice=$(cat "$apt.err")
  entry=$(sed -n "s/.*add one, e.g. '\([^']*\)' to \([^ ]*\)$/\1/p" <<< "$advice")
  file=$(sed -n "s/.*add one, e.g. '\([^']*\)' to \([^ ]*\)$/\2/p" <<< "$advice")
  [[ $(wc -l < "$apt.err") -eq 1 && -n $entry ]] || { fail "$i" "no one-line advice: $advice"; continue; }
  echo "$entry" >> "$file"
  archives "$apt"
  [[ $answer == "http://deb.debian.org/debian bookworm" ]] || fail "$i" "advice followed, got '$answer'"
done

# An entry apt refuses: apt's own error, and not the advice of a missing one.
mkdir -p "$tmp/bad" && echo 'deb [ broken http://x.example/debian bookworm main' > "$tmp/bad/sources.list"
bash "$script" "$tmp/bad" bookworm 2> "$tmp/bad.err"
rc=$?
((rc != 0 && rc != 1)) && grep -q '^E: ' "$tmp/bad.err" || fail bad "exit $rc, $(cat "$tmp/bad.err")"

echo "apt_archives: $((${#rows[@]} + 1)) rows, $failures failed"
((failures == 0))
