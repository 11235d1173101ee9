#include "host/heap_pages.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace kvlhost {
namespace {

// Address space that the heap grows by at a time: a 2-hour play's index fits.
constexpr int kHeapReserve = 128 << 20;
// Setting the reserve fixes the size above which a block gets a mapping of
// its own at 128 KiB; frames of HD keyframe size would then each cost a
// mapping and its page faults. This is the C library's own upper bound.
constexpr int kLargestHeapBlock = 32 << 20;

}  // namespace

void UseHugeHeapPages() {
  if (mallopt(M_MMAP_THRESHOLD, kLargestHeapBlock) != 1 ||
      mallopt(M_TOP_PAD, kHeapReserve) != 1)
    return;
  // A block a little larger than the free top of the heap makes it grow now.
  auto* const before = static_cast<char*>(sbrk(0));
  void* const grown = std::malloc(mallinfo2().keepcost + 1);
  auto* const end = static_cast<char*>(sbrk(0));
  const uintptr_t pageMask = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE)) - 1;
  const uintptr_t from = (reinterpret_cast<uintptr_t>(grown) + pageMask) & ~pageMask;
  // The block's first whole page must lie inside the grown heap.
  if (grown && end > before && from < reinterpret_cast<uintptr_t>(end))
    madvise(reinterpret_cast<void*>(from), reinterpret_cast<uintptr_t>(end) - from,
            MADV_HUGEPAGE);
  std::free(grown);
}

}  // namespace kvlhost
