#include "tests/support/unknown_sizes.h"

#include <algorithm>

namespace mkvtest {
namespace {

constexpr uint64_t kSegmentId = 0x18538067;
constexpr uint64_t kClusterId = 0x1F43B675;

// One element's header: where its size field and payload start, its ID with
// the length marker kept, and its size.
struct Element {
  size_t sizeAt = 0;
  size_t payloadAt = 0;
  uint64_t id = 0;
  uint64_t size = 0;
};

// The length of the variable-size integer starting with `first`; 0 if none.
size_t LengthOf(uint8_t first) {
  for (size_t length = 1; length <= 8; ++length)
    if (first & (0x80 >> (length - 1))) return length;
  return 0;
}

// The integer at `at`, its marker bit cleared unless `keepMarker`; false past the end.
bool ReadNumber(const Bytes& file, size_t& at, bool keepMarker, uint64_t* value) {
  if (at >= file.size()) return false;
  const size_t length = LengthOf(file[at]);
  if (length == 0 || at + length > file.size()) return false;
  *value = keepMarker ? file[at] : file[at] & (0xFF >> length);
  for (size_t i = 1; i < length; ++i) *value = (*value << 8) | file[at + i];
  at += length;
  return true;
}

bool ReadElement(const Bytes& file, size_t at, Element* element) {
  if (!ReadNumber(file, at, true, &element->id)) return false;
  element->sizeAt = at;
  if (!ReadNumber(file, at, false, &element->size)) return false;
  element->payloadAt = at;
  return true;
}

// All ones after the length marker: the value that means "unknown".
void WriteUnknown(Bytes& file, size_t at) {
  const size_t length = LengthOf(file[at]);
  file[at] = static_cast<uint8_t>(0xFF >> (length - 1));
  for (size_t i = 1; i < length; ++i) file[at + i] = 0xFF;
}

}  // namespace

Bytes WithUnknownSizes(Bytes file) {
  size_t at = 0;
  Element top;
  while (ReadElement(file, at, &top) && top.id != kSegmentId)
    at = top.payloadAt + static_cast<size_t>(top.size);
  if (top.id != kSegmentId) return file;
  const uint64_t end = std::min<uint64_t>(top.payloadAt + top.size, file.size());
  WriteUnknown(file, top.sizeAt);
  Element child;
  for (at = top.payloadAt; at < end && ReadElement(file, at, &child);
       at = child.payloadAt + static_cast<size_t>(child.size)) {
    if (child.id == kClusterId) WriteUnknown(file, child.sizeAt);
  }
  return file;
}

}  // namespace mkvtest
