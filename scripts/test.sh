#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test twice: once as
# shipped, once with AddressSanitizer and UndefinedBehaviorSanitizer; runs
# the concurrency tests a third time, with ThreadSanitizer; then fuzzes the
# whole path for a minute.
# Run as root on Debian bookworm.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$here/scripts/setup.sh"

export ASAN_OPTIONS=exitcode=86:detect_leaks=1
export UBSAN_OPTIONS=halt_on_error=1:exitcode=87:print_stacktrace=1
export TSAN_OPTIONS=halt_on_error=1:exitcode=88:second_deadlock_stack=1

bash "$here/scripts/build.sh" "$here/build" -DMKVSOURCE_BENCHMARKS=ON
(cd "$here/build" && ctest --output-on-failure -j "$(nproc)")

bash "$here/scripts/build.sh" "$here/build-sanitize" -DMKVSOURCE_SANITIZE=ON
(cd "$here/build-sanitize" && ctest --output-on-failure -j "$(nproc)")

# Only what runs threads: the stress tests and the host's playback (with --threads).
bash "$here/scripts/build.sh" "$here/build-tsan" -DMKVSOURCE_SANITIZE=thread \
  -DMKVSOURCE_BENCHMARKS=OFF --target stress_tests --target host_tests
(cd "$here/build-tsan" &&
  ctest --output-on-failure -j "$(nproc)" -R '^Stress|MediaPlayback' > ctest.log 2>&1 ||
  { tail -n 200 ctest.log; exit 1; })

bash "$here/scripts/fuzz.sh" 60 1
