// kvl-play --plot, the picture read back with libxml2: each band's bars add up to the stream's
// bytes and its ticks to ffprobe's key frames; the chapter lines and the seek marks stand where
// the report puts them, on the picture's own time axis; rsvg-convert renders it whatever the
// file's name; a picture that can't be written leaves nothing behind.
#include "host/plot/delivery_plot.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <numeric>

#include "tests/host/kvl_play_run.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_file.h"

namespace hosttest {
namespace {

namespace fs = std::filesystem;

const std::string kSample = mkvtest::MediaPath("sample");

// The picture read back, searched with XPath; `s:` is the SVG namespace.
class Picture {
 public:
  explicit Picture(const std::string& path)
      : document_(xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET)) {}
  ~Picture() { xmlFreeDoc(document_); }

  bool parsed() const { return document_ != nullptr; }

  // The text of each attribute or element that `path` selects.
  std::vector<std::string> Texts(const std::string& path) const {
    std::vector<std::string> texts;
    xmlXPathContextPtr context = xmlXPathNewContext(document_);
    xmlXPathRegisterNs(context, BAD_CAST "s", BAD_CAST "http://www.w3.org/2000/svg");
    xmlXPathObjectPtr found = xmlXPathEvalExpression(BAD_CAST path.c_str(), context);
    const xmlNodeSet* nodes = found ? found->nodesetval : nullptr;
    for (int i = 0; nodes && i < nodes->nodeNr; ++i) {
      xmlChar* text = xmlNodeGetContent(nodes->nodeTab[i]);
      texts.emplace_back(reinterpret_cast<const char*>(text));
      xmlFree(text);
    }
    xmlXPathFreeObject(found);
    xmlXPathFreeContext(context);
    return texts;
  }

  std::vector<double> Numbers(const std::string& path) const {
    std::vector<double> numbers;
    for (const std::string& text : Texts(path)) numbers.push_back(std::stod(text));
    return numbers;
  }

 private:
  xmlDocPtr document_;
};

double Sum(const std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0);
}

std::string Band(const nlohmann::json& stream) {
  return "//s:g[@class='band'][@data-stream='" + stream["index"].dump() + "']";
}

class FilePicture : public testing::TestWithParam<const char*> {};

// Audio has every chunk a key frame to ffprobe and no ticks; MPEG-4 part 2 can't be told.
TEST_P(FilePicture, BarsAndSyncTicksAddUpToWhatWasDelivered) {
  const std::string svg = mkvtest::NewTempPath(".svg");
  const HostRun run = RunKvlPlay({"--json", "--plot", svg, mkvtest::MediaPath(GetParam())});
  ASSERT_EQ(run.status, 0) << run.errors;
  const nlohmann::json report = nlohmann::json::parse(run.report);
  const Picture picture(svg);
  ASSERT_TRUE(picture.parsed());
  std::map<std::string, double> keys;
  for (const mkvtest::CsvRow& packet : mkvtest::ReadFacts(GetParam(), "packets"))
    keys[packet[0]] += packet[4] == "1";
  for (const nlohmann::json& stream : report["streams"]) {
    SCOPED_TRACE(stream.dump());
    const double ffprobeKeys = keys[stream["index"].dump()];
    const std::vector<double> bars =
        picture.Numbers(Band(stream) + "/s:g[@class='bars']/s:rect/@data-bytes");
    EXPECT_NEAR(Sum(bars), stream["bytes"].get<double>(), 0.5 * static_cast<double>(bars.size()));
    const std::vector<double> ticks =
        picture.Numbers(Band(stream) + "/s:g[@class='sync']/s:rect/@data-chunks");
    const bool told = stream["format"] == "H264" || stream["format"] == "H265";
    EXPECT_EQ(Sum(ticks), told ? ffprobeKeys : 0);
    EXPECT_LE(static_cast<double>(ticks.size()), ffprobeKeys);
    if (stream["kind"] == "audio") {
      EXPECT_EQ(ffprobeKeys, stream["chunks"].get<double>());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(CommittedFiles, FilePicture,
                         testing::ValuesIn(kPlayedMedia));

// The axis's labelled ticks give x for a time; chapter times are the engine's 10 us units.
TEST(Picture, ChapterLinesAndSeekMarksStandWhereTheReportSays) {
  const std::string svg = mkvtest::NewTempPath(".svg");
  const HostRun run = RunKvlPlay({"--json", "--chapter", "5", "--plot", svg, kSample});
  ASSERT_EQ(run.status, 0) << run.errors;
  const nlohmann::json report = nlohmann::json::parse(run.report);
  const Picture picture(svg);
  const std::vector<double> axisX =
      picture.Numbers("//s:g[@class='axis']/s:line[@data-seconds]/@x1");
  const std::vector<double> axisSeconds =
      picture.Numbers("//s:g[@class='axis']/s:line/@data-seconds");
  ASSERT_GE(axisX.size(), 2u);
  const double perSecond = (axisX.back() - axisX.front()) / axisSeconds.back();
  const auto x = [&](double seconds) { return axisX.front() + seconds * perSecond; };

  const std::vector<double> starts = picture.Numbers("//s:line[@data-chapter]/@data-start");
  const std::vector<double> lines = picture.Numbers("//s:line[@data-chapter]/@x1");
  ASSERT_EQ(starts.size(), 10u);
  for (size_t i = 0; i < starts.size(); ++i) {
    EXPECT_EQ(starts[i], report["chapters"][i]["start"].get<double>());
    EXPECT_NEAR(lines[i], x(starts[i] / 1e5), 0.15) << i;
  }
  const double secondsPerTick = report["chapters"][9]["end"].get<double>() / 1e5 /
                                report["streams"][0]["duration"].get<double>();
  for (const nlohmann::json& stream : report["streams"]) {
    SCOPED_TRACE(stream.dump());
    const nlohmann::json& seek = stream["seeks"][0];
    const std::string marks = Band(stream) + "/s:g[@class='seek']/";
    EXPECT_EQ(picture.Numbers(marks + "s:path[@class='seek-asked']/@data-ticks"),
              std::vector<double>{seek["requested"].get<double>()});
    EXPECT_EQ(picture.Numbers(marks + "s:path[@class='seek-landed']/@data-ticks"),
              std::vector<double>{seek["actual"].get<double>()});
    const std::vector<double> from = picture.Numbers(marks + "s:line[@class='seek-jump']/@x1");
    const std::vector<double> to = picture.Numbers(marks + "s:line[@class='seek-jump']/@x2");
    ASSERT_EQ(from.size() + to.size(), 2u);
    EXPECT_NEAR(from[0], x(seek["requested"].get<double>() * secondsPerTick), 0.15);
    EXPECT_NEAR(to[0], x(seek["actual"].get<double>() * secondsPerTick), 0.15);
  }
}

// Markup characters and a byte that isn't UTF-8 in the name.
TEST(Picture, AnyFileNameGivesAPictureThatRsvgConvertRenders) {
  const std::string folder = mkvtest::NewTempPath("-names");
  fs::create_directory(folder);
  const std::string media = folder + "/a <b> & \"c\" \xff.mkv";
  fs::copy_file(kSample, media);
  const std::string svg = folder + "/picture.svg", png = folder + "/picture.png";
  const HostRun run = RunKvlPlay({"--plot", svg, media});
  ASSERT_EQ(run.status, 0) << run.errors;
  const Picture picture(svg);
  ASSERT_TRUE(picture.parsed());
  EXPECT_EQ(picture.Texts("/s:svg/s:title")[0].rfind("a <b> & \"c\" \uFFFD.mkv: ", 0), 0u);
  const std::string command = std::string(RSVG_CONVERT) + " -o '" + png + "' '" + svg + "'";
  ASSERT_EQ(std::system(command.c_str()), 0) << command << " (scripts/setup.sh installs it)";
  std::ifstream rendered(png, std::ios::binary);
  std::string signature(8, '\0');
  rendered.read(signature.data(), 8);
  EXPECT_EQ(signature, "\x89PNG\r\n\x1a\n");
}

// A folder that isn't there; a folder standing under the picture's name, found at the
// rename; a file that doesn't play, so that there is nothing to draw.
TEST(Picture, NothingHalfWrittenIsLeftBehind) {
  const std::string folder = mkvtest::NewTempPath("-unwritable");
  fs::create_directories(folder + "/taken.svg");
  const struct {
    std::vector<std::string> args;
    int status;
    std::string error;  // the one line's start
  } cases[] = {
      {{"--plot", "/nonexistent/x.svg", kSample}, 5,
       "kvl-play: cannot write /nonexistent/x.svg: No such file or directory\n"},
      {{"--plot", folder + "/taken.svg", kSample}, 5,
       "kvl-play: cannot write " + folder + "/taken.svg: Is a directory\n"},
      {{"--plot", folder + "/x.svg", mkvtest::WriteTemp({'n', 'o', 't'})}, 1,
       "kvl-play: not playable: "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.args));
    const HostRun run = RunKvlPlay(c.args);
    EXPECT_EQ(run.status, c.status);
    EXPECT_EQ(run.errors.rfind(c.error, 0), 0u) << run.errors;
    EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
    std::vector<std::string> left;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
      left.push_back(entry.path().filename());
    EXPECT_EQ(left, std::vector<std::string>{"taken.svg"});
  }
}

}  // namespace
}  // namespace hosttest
