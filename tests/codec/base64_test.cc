#include "runtime/base64/rfc_base64_codec.h"

#include <memory>
#include <string>

#include "gtest/gtest.h"

namespace {

// What `text` decodes to; "(none)" when refused, which must leave size 0.
std::string Decode(qv64::Base64Codec& codec, const std::string& text) {
  unsigned int size = 12345;
  std::unique_ptr<unsigned char[]> bytes(codec.decode(text, size));
  if (!bytes) return size == 0 ? "(none)" : "(size left)";
  return std::string(reinterpret_cast<char*>(bytes.get()), size);
}

// The URL-safe alphabet with padding; a group with a character outside the
// alphabet decodes as zeros, the others are unaffected, and a pad ends the
// group it is in; only bad lengths are refused.
TEST(RFCBase64CodecTest, EncodesAndDecodes) {
  const struct {
    std::string bytes, text;
    bool encodes;
  } cases[] = {
      {"", "", true}, {"M", "TQ==", true}, {"Ma", "TWE=", true}, {"Many", "TWFueQ==", true},
      {"\xFB\xEF\xBE", "----", true}, {"\xFF\xFF\xFF", "____", true},
      {std::string("\0\0\0\0", 4), "AAAAAA==", true},
      {std::string(3, '\0'), "T+Fu", false}, {"Man" + std::string(3, '\0'), "TWFuT/Fu", false},
      {std::string("M\0\0Man", 6), "TQ==TWFu", false}, {std::string(3, '\0') + "Man", "TW=uTWFu", false},
      {std::string(1, '\0'), "T!==", false}, {std::string(1, '\0'), "====", false},
      {"(none)", "TWF", false}, {"(none)", "TWFuT", false},
  };
  qv64::RFCBase64Codec rfc;
  qv64::Base64Codec& codec = rfc;
  for (const auto& c : cases) {
    if (c.encodes) {
      EXPECT_EQ(c.text, codec.encode(c.bytes));
      EXPECT_EQ(c.text, codec.encode(c.bytes.data(), static_cast<int>(c.bytes.size())));
    }
    EXPECT_EQ(c.bytes.empty() ? "(none)" : c.bytes, Decode(codec, c.text)) << c.text;
  }
  EXPECT_EQ("", codec.encode("abc", 0));
  EXPECT_EQ("", codec.encode("abc", -3));
  EXPECT_EQ("", codec.encode(nullptr, 3));
}

TEST(RFCBase64CodecTest, EveryByteValueRoundTrips) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  qv64::RFCBase64Codec codec;
  for (size_t length : {254, 255, 256}) {
    const std::string text = codec.encode(bytes.substr(0, length));
    EXPECT_EQ(std::string::npos, text.find_first_of("+/"));
    EXPECT_EQ(bytes.substr(0, length), Decode(codec, text));
  }
}

}  // namespace
