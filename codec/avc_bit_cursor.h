#ifndef CODEC_AVC_BIT_CURSOR_H_
#define CODEC_AVC_BIT_CURSOR_H_

#include <cstdint>

// A read position over an RBSP of known size, for the field-by-field walk of
// a parameter set. A read that would pass the end fails, stores nothing and
// leaves the position where it was; any other read gives what the flat
// AVCRead* functions give, cut to the field's width, and moves on. The cursor
// does not own the data.
class AVCBitCursor {
 public:
  AVCBitCursor(unsigned char* data, unsigned int size);

  template <typename Field>
  bool ReadBits(unsigned int bitCount, Field* field) {
    uint64_t value;
    if (!ReadValue(bitCount, &value))
      return false;
    *field = static_cast<Field>(value);
    return true;
  }

  template <typename Field>
  bool ReadExpGolomb(Field* field) {
    uint64_t value;
    if (!ReadExpGolombValue(&value))
      return false;
    *field = static_cast<Field>(value);
    return true;
  }

  bool ReadSignedExpGolomb(int32_t* field);

  unsigned int position() const { return position_; }

 private:
  bool ReadValue(unsigned int bitCount, uint64_t* value);
  bool ReadExpGolombValue(uint64_t* value);
  // True when a whole Exp-Golomb code starts at the position.
  bool HoldsExpGolomb() const;
  bool Holds(uint64_t bitCount) const;

  unsigned char* data_;
  unsigned int position_ = 0;
  unsigned int end_;
};

#endif  // CODEC_AVC_BIT_CURSOR_H_
