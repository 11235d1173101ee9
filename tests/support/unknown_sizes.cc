#include "tests/support/unknown_sizes.h"

#include <algorithm>
#include <cstdint>

namespace mkvtest {
namespace {

constexpr uint64_t kSegmentId = 0x18538067;
constexpr uint64_t kClusterId = 0x1F43B675;

// One element's header: its ID with the length marker kept, where its size
// field and payload start, and its size.
struct Element {
  uint64_t id = 0;
  size_t sizeAt = 0;
  size_t payloadAt = 0;
  uint64_t size = 0;
  bool unknown = false;
};

// The length of the variable-size integer starting with `first`; 0 if none.
size_t LengthOf(uint8_t first) {
  for (size_t length = 1; length <= 8; ++length)
    if (first & (0x80 >> (length - 1))) return length;
  return 0;
}

// The integer at `at`, its marker bit cleared unless `keepMarker`, and
// whether all its value bits are set; false past the end.
bool ReadNumber(const Bytes& file, size_t& at, bool keepMarker, uint64_t* value,
                bool* allOnes) {
  if (at >= file.size()) return false;
  const size_t length = LengthOf(file[at]);
  if (length == 0 || at + length > file.size()) return false;
  const uint64_t bits = file[at] & (0xFF >> length);
  *value = keepMarker ? file[at] : bits;
  *allOnes = bits == (0xFFu >> length);
  for (size_t i = 1; i < length; ++i) {
    *value = (*value << 8) | file[at + i];
    *allOnes = *allOnes && file[at + i] == 0xFF;
  }
  at += length;
  return true;
}

bool ReadElement(const Bytes& file, size_t at, Element* element) {
  bool ignored = false;
  if (!ReadNumber(file, at, true, &element->id, &ignored)) return false;
  element->sizeAt = at;
  if (!ReadNumber(file, at, false, &element->size, &element->unknown)) return false;
  element->payloadAt = at;
  return true;
}

// The offset just past `element`, bounded by `end`.
size_t EndOf(const Element& element, size_t end) {
  return static_cast<size_t>(std::min<uint64_t>(element.payloadAt + element.size, end));
}

}  // namespace

std::vector<size_t> SegmentAndClusterSizeFields(const Bytes& file, bool* whole) {
  std::vector<size_t> fields;
  *whole = false;
  Element top;
  for (size_t at = 0; at < file.size(); at = EndOf(top, file.size())) {
    if (!ReadElement(file, at, &top) || top.unknown) return fields;
    if (top.id != kSegmentId) continue;
    fields.push_back(top.sizeAt);
    const size_t end = EndOf(top, file.size());
    Element child;
    for (size_t inner = top.payloadAt; inner < end; inner = EndOf(child, end)) {
      if (!ReadElement(file, inner, &child) || child.unknown) return fields;
      if (child.id == kClusterId) fields.push_back(child.sizeAt);
    }
  }
  *whole = true;
  return fields;
}

void WriteUnknownSizes(Bytes& file, const std::vector<size_t>& fields) {
  for (const size_t at : fields) {
    const size_t length = LengthOf(file[at]);
    file[at] = static_cast<uint8_t>(0xFF >> (length - 1));
    for (size_t i = 1; i < length; ++i) file[at + i] = 0xFF;
  }
}

Bytes WithUnknownSizes(Bytes file) {
  bool whole = false;
  WriteUnknownSizes(file, SegmentAndClusterSizeFields(file, &whole));
  return file;
}

}  // namespace mkvtest
