// Appends EBML elements to a byte buffer, for building test files.
#ifndef MKVSOURCE_TESTS_SUPPORT_EBML_WRITER_H_
#define MKVSOURCE_TESTS_SUPPORT_EBML_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mkvtest {

using Bytes = std::vector<uint8_t>;

// Appends `value` as an EBML variable-size integer of `length` bytes, or of
// the fewest bytes that hold it when `length` is 0. Lengths 1 to 8.
void AppendVint(Bytes* out, uint64_t value, int length = 0);

// Appends `value` as a signed EBML lacing difference (the value plus the
// bias of its length), in the fewest bytes that hold it.
void AppendSignedVint(Bytes* out, int64_t value);

// Writes elements at the end of a buffer the caller owns. Master elements
// get an 8-byte size that EndMaster fills in later, so every offset taken
// while writing is already the final one.
class EbmlWriter {
 public:
  explicit EbmlWriter(Bytes* out) : out_(out) {}

  size_t offset() const { return out_->size(); }

  void UInt(uint32_t id, uint64_t value);
  void Float(uint32_t id, double value);
  void Binary(uint32_t id, const Bytes& value);
  void String(uint32_t id, const std::string& value) {
    Binary(id, Bytes(value.begin(), value.end()));
  }
  // An element whose payload the caller appends afterwards: `size` bytes.
  void Header(uint32_t id, uint64_t size);

  // Returns the element's offset, to hand to EndMaster.
  size_t StartMaster(uint32_t id);
  void EndMaster(size_t master_offset);

 private:
  void Raw(uint64_t value, int length);

  Bytes* out_;
};

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_EBML_WRITER_H_
