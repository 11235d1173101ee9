#include "runtime/base64/rfc_base64_codec.h"

namespace qv64 {
namespace {

constexpr char kAlphabet[] =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr char kPad = '=';

// The index of `c` in the alphabet, or -1.
int ValueOf(char c) {
  for (int i = 0; i < 64; ++i) {
    if (kAlphabet[i] == c)
      return i;
  }
  return -1;
}

}  // namespace

std::string RFCBase64Codec::encode(const char* data, int size) {
  std::string text;
  if (!data || size <= 0)
    return text;
  const auto* bytes = reinterpret_cast<const unsigned char*>(data);
  text.reserve((static_cast<size_t>(size) + 2) / 3 * 4);
  for (int i = 0; i < size; i += 3)
    encodeBlock(bytes + i, size - i < 3 ? size - i : 3, &text);
  return text;
}

std::string RFCBase64Codec::encode(const std::string& data) {
  return encode(data.data(), static_cast<int>(data.size()));
}

unsigned char* RFCBase64Codec::decode(const std::string& text,
                                      unsigned int& size) {
  size = 0;
  if (text.empty() || text.size() % 4 != 0)
    return nullptr;
  const size_t groups = text.size() / 4;
  auto* bytes = new unsigned char[groups * 3]();
  size_t decoded = groups * 3;
  if (text[text.size() - 1] == kPad)
    decoded -= text[text.size() - 2] == kPad ? 2 : 1;
  for (size_t i = 0; i < groups; ++i)
    decodeBlock(text.data() + 4 * i, bytes + 3 * i);
  size = static_cast<unsigned int>(decoded);
  return bytes;
}

void RFCBase64Codec::encodeBlock(const unsigned char* bytes, int count,
                                 std::string* text) {
  const unsigned int b0 = bytes[0];
  const unsigned int b1 = count > 1 ? bytes[1] : 0;
  const unsigned int b2 = count > 2 ? bytes[2] : 0;
  char group[4] = {kPad, kPad, kPad, kPad};
  group[0] = kAlphabet[b0 >> 2];
  group[1] = kAlphabet[(b0 & 0x03) << 4 | b1 >> 4];
  if (count > 1)
    group[2] = kAlphabet[(b1 & 0x0F) << 2 | b2 >> 6];
  if (count > 2)
    group[3] = kAlphabet[b2 & 0x3F];
  text->append(group, 4);
}

void RFCBase64Codec::decodeBlock(const char* group, unsigned char* out) {
  // Characters before the padding carry data; "xx==" holds one byte and
  // "xxx=" two.
  int characters = 4;
  if (group[3] == kPad)
    characters = group[2] == kPad ? 2 : 3;
  int values[4] = {0, 0, 0, 0};
  for (int i = 0; i < characters; ++i) {
    values[i] = ValueOf(group[i]);
    if (values[i] < 0)
      return;
  }
  const unsigned char decoded[3] = {
      static_cast<unsigned char>(values[0] << 2 | values[1] >> 4),
      static_cast<unsigned char>((values[1] & 0x0F) << 4 | values[2] >> 2),
      static_cast<unsigned char>((values[2] & 0x03) << 6 | values[3])};
  for (int i = 0; i < characters - 1; ++i)
    out[i] = decoded[i];
}

}  // namespace qv64
