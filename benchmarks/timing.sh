# Shared by the measuring scripts here; source it.
# perf stat writes the wall time (duration_time, ns) and task clock (CPU ms,
# user and system) to a file; /usr/bin/time counts in 10 ms, too coarse for
# the short runs, but gives the peak resident memory.

# perf_stat OUT COMMAND...: runs COMMAND, its output dropped, under perf stat
# into OUT; fails as COMMAND does.
perf_stat() {
  local out=$1
  shift
  perf stat -x, -e duration_time,task-clock -o "$out" -- "$@" > /dev/null 2>&1
}

# perf_times OUT: "WALL CPU" in seconds from what perf_stat wrote to OUT.
perf_times() {
  awk -F, '/duration_time/ { wall = $1 / 1e9 } /task-clock/ { cpu = $1 / 1000 }
           END { print wall, cpu }' "$1"
}

# median "V V V ...": the middle value, the upper one of an even count.
median() {
  tr ' ' '\n' <<< "$1" | sed '/^$/d' | sort -g | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'
}
