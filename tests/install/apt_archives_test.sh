#!/usr/bin/env bash
# scripts/apt_archive.sh over fake /etc/apt folders, one row per shape of
# apt sources: the expected answer ("-" for none), then FILE=CONTENT pairs.
set -uo pipefail
script=$1
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT

debian='Types: deb\nURIs: http://deb.debian.org/debian\nSuites: bookworm bookworm-updates\nComponents: main\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg'
security='Types: deb\nURIs: http://deb.debian.org/debian-security\nSuites: bookworm-security\nComponents: main'
rows=(
  "http://deb.debian.org/debian /usr/share/keyrings/debian-archive-keyring.gpg|sources.list.d/debian.sources=$security\n\n$debian"
  "http://ftp.de.debian.org/debian|sources.list=# deb cdrom:[Debian]/ bookworm main\ndeb http://security.debian.org/debian-security bookworm-security main\ndeb http://ftp.de.debian.org/debian bookworm main\ndeb-src http://ftp.de.debian.org/debian bookworm main"
  "https://mirror.example/debian/ /k.gpg|sources.list=deb [arch=amd64 signed-by=/k.gpg] https://mirror.example/debian/ bookworm main contrib"
  "http://m.example/debian|sources.list.d/m.list=deb [ arch=amd64 ] http://m.example/debian bookworm main # a comment"
  "http://deb.debian.org/debian /usr/share/keyrings/debian-archive-keyring.gpg|sources.list=# only comments\n|sources.list.d/debian.sources=$debian"
  "https://b.example/debian|sources.list.d/a.sources=types: deb\nuris: https://a.example/debian\nsuites: bookworm\nenabled: no\n\ntypes: deb-src\nuris: https://b.example/debian https://c.example/debian\nsuites: bookworm\ncomponents: main"
  "http://x.example/debian|sources.list.d/x.sources=Types: deb\nURIs: http://x.example/debian\nSuites: bookworm\nSigned-By:\n -----BEGIN PGP PUBLIC KEY BLOCK-----\n Comment: inline\n .\n -----END PGP PUBLIC KEY BLOCK-----"
  "-|sources.list.d/debian.sources=$security|sources.list=deb http://deb.debian.org/debian trixie main"
  "-|"
)

failures=0
for i in "${!rows[@]}"; do
  IFS='|' read -r -a parts <<< "${rows[$i]}"
  apt="$tmp/$i"
  mkdir -p "$apt/sources.list.d"
  for file in "${parts[@]:1}"; do
    [[ -n $file ]] && printf '%b\n' "${file#*=}" > "$apt/${file%%=*}"
  done
  answer=$(bash "$script" "$apt" bookworm) || answer=-
  if [[ $answer != "${parts[0]}" ]]; then
    echo "row $i: expected '${parts[0]}', got '$answer'"
    failures=$((failures + 1))
  fi
done
echo "apt_archive: ${#rows[@]} rows, $failures failed"
((failures == 0))
