// One input through the whole plug-in, the way an engine drives it. The fuzz
// target and the corpus replay test share it.
#ifndef MKVSOURCE_TESTS_FUZZ_WHOLE_PATH_H_
#define MKVSOURCE_TESTS_FUZZ_WHOLE_PATH_H_

#include <cstddef>
#include <cstdint>

namespace mkvtest {

// Probes `data` as a Matroska file read from memory, opens it, asks for the
// title and chapters, opens the title and plays every stream: codec data,
// reading (bounded), exact and inexact seeks to times taken from the input,
// a negative speed; then closes it all. Every chunk goes back through its
// allocator. Returns the number of chunks read.
size_t PlayWholePath(const uint8_t* data, size_t size);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_FUZZ_WHOLE_PATH_H_
