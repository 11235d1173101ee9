#ifndef HOST_HEAP_PAGES_H_
#define HOST_HEAP_PAGES_H_

namespace kvlhost {

// The parser keeps an index entry of about 120 bytes for every block that a
// stream has walked, until the title closes, so a long play touches tens of
// megabytes of fresh heap; every 4 KiB page of it costs a page fault, and
// faults dominate the play. This grows the heap once by a large reserve,
// which costs address space only, and asks for it to be backed by
// transparent huge pages: the same heap then faults in 2 MiB steps. Large
// frames stay in the heap instead of a mapping of their own each. Call it
// first thing; where the heap isn't the C library's (a sanitizer, valgrind)
// it does nothing.
void UseHugeHeapPages();

}  // namespace kvlhost

#endif  // HOST_HEAP_PAGES_H_
