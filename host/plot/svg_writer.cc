#include "host/plot/svg_writer.h"

#include <cmath>
#include <cstdint>
#include <cstdio>

#include "host/engine_side/host_error.h"

namespace kvlhost {
namespace {

const xmlChar* Xml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

constexpr char kReplacement[] = "\xEF\xBF\xBD";  // U+FFFD

// The length of the well-formed UTF-8 sequence at `at` of a character that
// XML allows, or 0.
size_t CharacterLength(const std::string& text, size_t at) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[at + i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return (lead >= 0x20 || lead == '\t' || lead == '\n' || lead == '\r') ? 1 : 0;
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (length == 0 || lead > 0xF4 || at + length > text.size()) return 0;
  uint32_t code = lead & (0x7F >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    code = code << 6 | (byte(i) & 0x3F);
  }
  const uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  const bool allowed = code >= least[length] && code <= 0x10FFFF && !surrogate &&
                       code != 0xFFFE && code != 0xFFFF;
  return allowed ? length : 0;
}

// Text from the file as XML can hold it: each byte that isn't part of an
// allowed character becomes U+FFFD.
std::string XmlText(const std::string& text) {
  std::string result;
  for (size_t at = 0; at < text.size();) {
    const size_t length = CharacterLength(text, at);
    result.append(length ? text.substr(at, length) : kReplacement);
    at += length ? length : 1;
  }
  return result;
}

// libxml2 would print its own lines for an output error; the HostError
// says it in one.
void Quiet(void*, const char*, ...) {}

}  // namespace

std::string SvgValue::Number(double number) {
  char text[32];
  const double tenths = std::round(number * 10) / 10;
  std::snprintf(text, sizeof(text), "%.1f", tenths == 0 ? 0.0 : tenths);
  std::string result = text;
  if (result.size() > 2 && result.compare(result.size() - 2, 2, ".0") == 0)
    result.resize(result.size() - 2);
  return result;
}

SvgWriter::SvgWriter(int descriptor, std::string path, SvgAttributes attributes)
    : path_(std::move(path)) {
  xmlSetGenericErrorFunc(nullptr, Quiet);
  xmlOutputBufferPtr output = xmlOutputBufferCreateFd(descriptor, nullptr);
  if (!output) Check(-1);
  writer_ = xmlNewTextWriter(output);
  if (!writer_) {
    xmlOutputBufferClose(output);
    Check(-1);
  }
  // One element a line keeps the file readable at a few bytes' cost.
  Check(xmlTextWriterSetIndent(writer_, 1));
  Check(xmlTextWriterSetIndentString(writer_, Xml("")));
  Check(xmlTextWriterStartDocument(writer_, nullptr, "UTF-8", nullptr));
  Check(xmlTextWriterStartElementNS(writer_, nullptr, Xml("svg"),
                                    Xml("http://www.w3.org/2000/svg")));
  Attributes(attributes);
}

SvgWriter::~SvgWriter() {
  if (writer_) xmlFreeTextWriter(writer_);
  xmlSetGenericErrorFunc(nullptr, nullptr);
}

void SvgWriter::Open(const char* element, SvgAttributes attributes) {
  Check(xmlTextWriterStartElement(writer_, Xml(element)));
  Attributes(attributes);
}

void SvgWriter::Close() { Check(xmlTextWriterEndElement(writer_)); }

void SvgWriter::Empty(const char* element, SvgAttributes attributes) {
  Open(element, attributes);
  Close();
}

void SvgWriter::Text(const char* element, SvgAttributes attributes, const std::string& text) {
  Open(element, attributes);
  Check(xmlTextWriterWriteString(writer_, Xml(XmlText(text).c_str())));
  Close();
}

void SvgWriter::Finish() {
  Check(xmlTextWriterEndDocument(writer_));
  Check(xmlTextWriterFlush(writer_));
}

void SvgWriter::Attributes(SvgAttributes attributes) {
  for (const auto& [name, value] : attributes)
    Check(xmlTextWriterWriteAttribute(writer_, Xml(name), Xml(XmlText(value.text()).c_str())));
}

void SvgWriter::Check(int result) const {
  if (result < 0) throw HostError(kHostFailure, "cannot write " + path_);
}

}  // namespace kvlhost
