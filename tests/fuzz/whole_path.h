// One input through the whole plug-in as an engine drives it, for the fuzz target and the replay.
#ifndef MKVSOURCE_TESTS_FUZZ_WHOLE_PATH_H_
#define MKVSOURCE_TESTS_FUZZ_WHOLE_PATH_H_

#include <cstddef>
#include <cstdint>

namespace mkvtest {

// Plays `data` as a Matroska file in memory, every stream read, sought to times taken from the
// input and played backwards; closes it all. Returns the number of chunks read.
size_t PlayWholePath(const uint8_t* data, size_t size);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_FUZZ_WHOLE_PATH_H_
