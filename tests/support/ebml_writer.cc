#include "tests/support/ebml_writer.h"

#include <cassert>
#include <cstring>

namespace mkvtest {
namespace {

constexpr int kMasterSizeLength = 8;

int BytesFor(uint64_t value) {
  int length = 1;
  while (length < 8 && (value >> (8 * length)) != 0) ++length;
  return length;
}

// The all-ones value of a length is reserved for "unknown size".
int VintLengthFor(uint64_t value) {
  int length = 1;
  while (length < 8 && value >= (uint64_t{1} << (7 * length)) - 1) ++length;
  return length;
}

}  // namespace

void AppendVint(Bytes* out, uint64_t value, int length) {
  if (length == 0) length = VintLengthFor(value);
  assert(length >= 1 && length <= 8);
  const uint64_t marked = value | (uint64_t{1} << (7 * length));
  for (int i = length - 1; i >= 0; --i) {
    out->push_back(static_cast<uint8_t>(marked >> (8 * i)));
  }
}

void AppendSignedVint(Bytes* out, int64_t value) {
  int length = 1;
  while (length < 8) {
    const int64_t bias = (int64_t{1} << (7 * length - 1)) - 1;
    if (value >= -bias && value <= bias) break;
    ++length;
  }
  const int64_t bias = (int64_t{1} << (7 * length - 1)) - 1;
  AppendVint(out, static_cast<uint64_t>(value + bias), length);
}

void EbmlWriter::Raw(uint64_t value, int length) {
  for (int i = length - 1; i >= 0; --i) {
    out_->push_back(static_cast<uint8_t>(value >> (8 * i)));
  }
}

void EbmlWriter::Header(uint32_t id, uint64_t size) {
  Raw(id, BytesFor(id));
  AppendVint(out_, size);
}

void EbmlWriter::UInt(uint32_t id, uint64_t value) {
  const int length = BytesFor(value);
  Header(id, length);
  Raw(value, length);
}

void EbmlWriter::Float(uint32_t id, double value) {
  uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  Header(id, sizeof bits);
  Raw(bits, sizeof bits);
}

void EbmlWriter::Binary(uint32_t id, const Bytes& value) {
  Header(id, value.size());
  out_->insert(out_->end(), value.begin(), value.end());
}

size_t EbmlWriter::StartMaster(uint32_t id) {
  const size_t master_offset = offset();
  Raw(id, BytesFor(id));
  AppendVint(out_, 0, kMasterSizeLength);
  return master_offset;
}

void EbmlWriter::EndMaster(size_t master_offset) {
  // The leading byte of an ID marks its length like that of a vint.
  const uint8_t lead = (*out_)[master_offset];
  int id_length = 1;
  while (id_length < 4 && !(lead & (0x80 >> (id_length - 1)))) ++id_length;
  const size_t size_offset = master_offset + id_length;
  const size_t payload = offset() - size_offset - kMasterSizeLength;
  Bytes size;
  AppendVint(&size, payload, kMasterSizeLength);
  std::memcpy(out_->data() + size_offset, size.data(), size.size());
}

}  // namespace mkvtest
