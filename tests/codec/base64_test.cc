#include "runtime/base64/rfc_base64_codec.h"

#include <memory>
#include <string>

#include "gtest/gtest.h"

namespace {

using qv64::Base64Codec;
using qv64::RFCBase64Codec;

struct Decoded {
  std::unique_ptr<unsigned char[]> bytes;
  unsigned int size;

  std::string text() const {
    return bytes ? std::string(reinterpret_cast<char*>(bytes.get()), size) : "";
  }
};

Decoded Decode(Base64Codec& codec, const std::string& text) {
  Decoded result;
  result.size = 12345;
  result.bytes.reset(codec.decode(text, result.size));
  return result;
}

TEST(RFCBase64CodecTest, EncodesWithTheURLSafeAlphabetAndPadding) {
  const struct {
    std::string bytes, text;
  } cases[] = {
      {"", ""},
      {"M", "TQ=="},
      {"Ma", "TWE="},
      {"Man", "TWFu"},
      {"Many", "TWFueQ=="},
      {"\xFB\xEF\xBE", "----"},
      {"\xFF\xFF\xFF", "____"},
      {std::string("\0\0\0\0", 4), "AAAAAA=="},
  };
  RFCBase64Codec rfc;
  Base64Codec& codec = rfc;
  for (const auto& c : cases) {
    EXPECT_EQ(c.text, codec.encode(c.bytes));
    EXPECT_EQ(c.text, codec.encode(c.bytes.data(), static_cast<int>(c.bytes.size())));
    const Decoded decoded = Decode(codec, c.text);
    EXPECT_EQ(c.bytes, decoded.text()) << c.text;
  }
}

TEST(RFCBase64CodecTest, EncodeOfNothingIsEmpty) {
  RFCBase64Codec codec;
  EXPECT_EQ("", codec.encode("abc", 0));
  EXPECT_EQ("", codec.encode("abc", -3));
  EXPECT_EQ("", codec.encode(nullptr, 3));
}

TEST(RFCBase64CodecTest, EveryByteValueRoundTrips) {
  std::string bytes;
  for (int i = 0; i < 256; ++i)
    bytes += static_cast<char>(i);
  RFCBase64Codec codec;
  for (size_t length : {254, 255, 256}) {
    const std::string text = codec.encode(bytes.substr(0, length));
    EXPECT_EQ(std::string::npos, text.find_first_of("+/"));
    const Decoded decoded = Decode(codec, text);
    EXPECT_EQ(bytes.substr(0, length), decoded.text());
  }
}

TEST(RFCBase64CodecTest, DecodeRefusesOnlyBadLengths) {
  RFCBase64Codec codec;
  for (const char* text : {"", "TWF", "TWFuT"}) {
    const Decoded decoded = Decode(codec, text);
    EXPECT_EQ(nullptr, decoded.bytes);
    EXPECT_EQ(0u, decoded.size);
  }
}

// A group with a character outside the alphabet decodes as zeros; the others
// are unaffected, and a pad ends the group it is in.
TEST(RFCBase64CodecTest, BadGroupsDecodeAsZerosSilently) {
  const struct {
    std::string text, bytes;
  } cases[] = {
      {"T+Fu", std::string(3, '\0')},
      {"TWFuT/Fu", "Man" + std::string(3, '\0')},
      {"TQ==TWFu", std::string("M\0\0Man", 6)},
      {"TW=uTWFu", std::string(3, '\0') + "Man"},
      {"T!==", std::string(1, '\0')},
      {"====", std::string(1, '\0')},
  };
  RFCBase64Codec codec;
  for (const auto& c : cases) {
    const Decoded decoded = Decode(codec, c.text);
    EXPECT_EQ(c.bytes, decoded.text()) << c.text;
  }
}

}  // namespace
