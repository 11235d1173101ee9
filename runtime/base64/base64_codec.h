#ifndef RUNTIME_BASE64_BASE64_CODEC_H_
#define RUNTIME_BASE64_BASE64_CODEC_H_

#include <string>

namespace qv64 {

// Turns bytes into base64 text and back. Implementations hold no state.
class Base64Codec {
 public:
  virtual std::string encode(const char* data, int size) = 0;
  virtual std::string encode(const std::string& data) = 0;
  // Gives a new array that the caller frees with delete[], and its length in
  // `size`; null with `size` 0 for text that can't be base64.
  virtual unsigned char* decode(const std::string& text,
                                unsigned int& size) = 0;

 protected:
  // Codecs are made by value; none is deleted through this interface.
  ~Base64Codec() = default;
};

}  // namespace qv64

#endif  // RUNTIME_BASE64_BASE64_CODEC_H_
