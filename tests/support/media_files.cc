#include "tests/support/media_files.h"

#include <fstream>
#include <iterator>
#include <sstream>

namespace mkvtest {

std::string MediaPath(const std::string& name, const std::string& suffix) {
  const std::string folder = name == "sample" ? "/samples/" : "/tests/data/media/";
  return MKVSOURCE_SOURCE_DIR + folder + name + suffix;
}

std::vector<CsvRow> CsvRows(const std::string& text) {
  std::istringstream lines(text);
  std::vector<CsvRow> rows;
  std::string line, field;
  for (std::getline(lines, line); std::getline(lines, line);) {
    std::istringstream fields(line + ",");
    rows.emplace_back();
    while (std::getline(fields, field, ',')) rows.back().push_back(field);
  }
  return rows;
}

std::vector<CsvRow> ReadFacts(const std::string& name, const std::string& kind) {
  std::ifstream in(MediaPath(name, "." + kind + ".csv"));
  return CsvRows(std::string(std::istreambuf_iterator<char>(in), {}));
}

}  // namespace mkvtest
