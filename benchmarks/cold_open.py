#!/usr/bin/env python3
"""Times kvl-play's open of a file whose pages are out of the page cache,
against the floor of any open that visits every cluster head: 64 bytes read
at each head, with the same cold cache. Rounds alternate the two, each after
posix_fadvise(DONTNEED) of the whole file, and the medians are printed.

  benchmarks/cold_open.py build/bin/kvl-play FILE [ROUNDS]

The heads are found by walking the file's level-1 elements by their sizes, so
the file's Segment and Clusters must have known sizes (the floor of a file
with unknown sizes is the whole file).
"""
import os
import statistics
import subprocess
import sys
import time

SEGMENT = 0x18538067
CLUSTER = 0x1F43B675


def vint(data, pos, keep_marker):
    first = data[pos]
    length = 1
    while length <= 8 and not first & (0x80 >> (length - 1)):
        length += 1
    if length > 8:
        raise ValueError(f"bad element header at {pos}")
    value = first if keep_marker else first & (0xFF >> length)
    for byte in data[pos + 1:pos + length]:
        value = value << 8 | byte
    return value, length


def element(f, pos):
    f.seek(pos)
    head = f.read(16)
    if len(head) < 2:
        return None
    ident, id_length = vint(head, 0, True)
    size, size_length = vint(head, id_length, False)
    return ident, pos + id_length + size_length, size


def cluster_heads(path):
    heads = []
    with open(path, "rb") as f:
        end = os.fstat(f.fileno()).st_size
        pos = 0
        while pos < end:
            found = element(f, pos)
            if not found:
                break
            ident, payload, size = found
            if ident == SEGMENT:
                pos = payload
                end = min(end, payload + size)
                continue
            if ident == CLUSTER:
                heads.append(pos)
            pos = payload + size
    return heads


def drop_cache(path):
    with open(path, "rb") as f:
        os.posix_fadvise(f.fileno(), 0, 0, os.POSIX_FADV_DONTNEED)


def read_heads(path, heads):
    with open(path, "rb", buffering=0) as f:
        for head in heads:
            os.pread(f.fileno(), 64, head)


def timed(action):
    start = time.monotonic()
    action()
    return time.monotonic() - start


def main():
    if len(sys.argv) < 3:
        sys.exit(f"usage: {sys.argv[0]} KVL_PLAY FILE [ROUNDS]")
    play, path = sys.argv[1], sys.argv[2]
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 3
    heads = cluster_heads(path)
    command = [play, "--speed", "-1000", path]
    opens, floors = [], []
    for _ in range(rounds):
        drop_cache(path)
        opens.append(timed(lambda: subprocess.run(command, stdout=subprocess.DEVNULL,
                                                  stderr=subprocess.DEVNULL, check=True)))
        drop_cache(path)
        floors.append(timed(lambda: read_heads(path, heads)))
    open_median, floor_median = statistics.median(opens), statistics.median(floors)
    print(f"{len(heads)} cluster heads; medians of {rounds} cold rounds")
    print(f"kvl-play open + first chunk: {open_median:.2f} s "
          f"({', '.join(f'{t:.2f}' for t in opens)})")
    print(f"64 bytes at each head:       {floor_median:.2f} s "
          f"({', '.join(f'{t:.2f}' for t in floors)})")
    print(f"ratio: {open_median / floor_median:.2f}x")


if __name__ == "__main__":
    main()
