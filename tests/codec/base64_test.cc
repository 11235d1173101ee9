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

// URL-safe with padding. A group with a foreign character decodes as zeros and a pad ends its
// group; only bad lengths are refused.
TEST(RFCBase64CodecTest, EncodesDecodesAndRoundTripsEveryByte) {
  const struct {
    std::string bytes, text;
    bool encodes;
  } cases[] = {
      {"M", "TQ==", true}, {"Ma", "TWE=", true}, {"Man", "TWFu", true},
      {"\xFB\xEF\xBE", "----", true}, {"\xFF\xFF\xFF", "____", true},
      {std::string(3, '\0'), "T+Fu", false}, {std::string("M\0\0Man", 6), "TQ==TWFu", false},
      {"(none)", "TWF", false}, {"(none)", "TWFuT", false}, {"(none)", "", false},
  };
  qv64::RFCBase64Codec rfc;
  qv64::Base64Codec& codec = rfc;
  for (const auto& c : cases) {
    if (c.encodes) {
      EXPECT_EQ(c.text, codec.encode(c.bytes));
      EXPECT_EQ(c.text, codec.encode(c.bytes.data(), static_cast<int>(c.bytes.size())));
    }
    EXPECT_EQ(c.bytes, Decode(codec, c.text)) << c.text;
  }
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  for (size_t length : {254, 255, 256}) {
    const std::string text = codec.encode(all.substr(0, length));
    EXPECT_EQ(std::string::npos, text.find_first_of("+/"));
    EXPECT_EQ(all.substr(0, length), Decode(codec, text));
  }
  EXPECT_EQ("", codec.encode(""));
  EXPECT_EQ("", codec.encode("abc", -3));
  EXPECT_EQ("TWE=", codec.encode("Man", 2));  // nothing read past the size
  EXPECT_EQ("", codec.encode(nullptr, 3));
}

}  // namespace
