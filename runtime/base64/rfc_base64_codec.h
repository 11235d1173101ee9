#ifndef RUNTIME_BASE64_RFC_BASE64_CODEC_H_
#define RUNTIME_BASE64_RFC_BASE64_CODEC_H_

#include <string>

#include "runtime/base64/base64_codec.h"

namespace qv64 {

// Base64 of RFC 4648 with the URL-safe alphabet ("-" and "_" for 62 and 63)
// and "=" padding. Decoding reports no errors: a group of four characters
// with one outside the alphabet decodes as three 0 bytes.
class RFCBase64Codec final : public Base64Codec {
 public:
  // Four characters for each started group of three bytes; a size of 0 or
  // below, or null data, gives "".
  std::string encode(const char* data, int size) override;
  std::string encode(const std::string& data) override;
  unsigned char* decode(const std::string& text, unsigned int& size) override;

 private:
  // `count` bytes, 1 to 3, as four characters, padded with "=".
  static void encodeBlock(const unsigned char* bytes, int count,
                          std::string* text);
  // Four characters into the up to three bytes at `out`; writes nothing when
  // a character it needs is not in the alphabet.
  static void decodeBlock(const char* group, unsigned char* out);
};

}  // namespace qv64

#endif  // RUNTIME_BASE64_RFC_BASE64_CODEC_H_
