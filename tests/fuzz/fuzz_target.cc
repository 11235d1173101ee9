// libFuzzer's entry: one input is one Matroska file, played as an engine would.
#include "tests/fuzz/whole_path.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  mkvtest::PlayWholePath(data, size);
  return 0;
}
