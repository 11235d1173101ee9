#!/usr/bin/env bash
# Plays every Matroska and WebM file under a folder through the host, the
# broken ones included, and fails on a crash, a hang or a sanitizer report.
# A file may be refused (1), fail to open (3) or have a stream with nothing
# to deliver (9); nothing else is allowed.
# Usage: run_corpus.sh KVL_PLAY CORPUS_DIR
set -u
host=$1
corpus=$2
if [[ ! -d "$corpus" ]]; then
  echo "corpus: no folder $corpus, skipped"
  exit 77
fi

# Sanitizer reports get exit codes of their own, apart from the host's.
export ASAN_OPTIONS=${ASAN_OPTIONS:-exitcode=86:detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-halt_on_error=1:exitcode=87:print_stacktrace=1}

failures=0
count=0
while IFS= read -r -d '' file; do
  for options in "--packets" "--threads --seek 500" "--speed -1000 --seek 0"; do
    count=$((count + 1))
    # shellcheck disable=SC2086
    timeout 60 "$host" $options "$file" > /dev/null 2> /tmp/corpus-run.$$
    status=$?
    case $status in
      0|1|3|9) ;;
      *)
        failures=$((failures + 1))
        echo "corpus: $file ($options) ended with status $status"
        tail -n 20 /tmp/corpus-run.$$
        ;;
    esac
  done
done < <(find "$corpus" -type f \( -name '*.mkv' -o -name '*.webm' \) -print0 | sort -z)
rm -f /tmp/corpus-run.$$
echo "corpus: $count runs, $failures failed"
[[ $failures -eq 0 ]]
