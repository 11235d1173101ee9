#ifndef HOST_PLOT_SVG_WRITER_H_
#define HOST_PLOT_SVG_WRITER_H_

#include <initializer_list>
#include <string>
#include <type_traits>
#include <utility>

#include <libxml/xmlwriter.h>

namespace kvlhost {

// An attribute's value: text as it is, a number with at most one decimal.
class SvgValue {
 public:
  SvgValue(const char* text) : text_(text) {}  // NOLINT: values read as literals
  SvgValue(std::string text) : text_(std::move(text)) {}  // NOLINT
  template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T>>>
  SvgValue(T number) : text_(Number(static_cast<double>(number))) {}  // NOLINT

  const std::string& text() const { return text_; }

 private:
  static std::string Number(double number);

  std::string text_;
};

using SvgAttributes = std::initializer_list<std::pair<const char*, SvgValue>>;

// One SVG document written element by element to a file descriptor through
// libxml2's text writer, which escapes every text and attribute value. Any
// failure throws a HostError with kHostFailure that names `path`.
class SvgWriter {
 public:
  // Writes the XML declaration and opens the root element with `attributes`.
  SvgWriter(int descriptor, std::string path, SvgAttributes attributes);
  ~SvgWriter();
  SvgWriter(const SvgWriter&) = delete;
  SvgWriter& operator=(const SvgWriter&) = delete;

  void Open(const char* element, SvgAttributes attributes = {});
  void Close();
  // An element without content, and one holding only text.
  void Empty(const char* element, SvgAttributes attributes);
  void Text(const char* element, SvgAttributes attributes, const std::string& text);
  // Closes every open element and writes everything out.
  void Finish();

 private:
  void Attributes(SvgAttributes attributes);
  void Check(int result) const;

  std::string path_;
  xmlTextWriterPtr writer_ = nullptr;
};

}  // namespace kvlhost

#endif  // HOST_PLOT_SVG_WRITER_H_
