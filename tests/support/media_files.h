// The committed media files (tests/data/media, samples) and the ffprobe
// packet lists beside them, which tests/data/make_media.sh made.
#ifndef MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_
#define MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_

#include <string>
#include <vector>

namespace mkvtest {

// Absolute path of NAME.mkv, or NAME + suffix; "sample" is the bundled file.
std::string MediaPath(const std::string& name, const std::string& suffix = ".mkv");

// The lines of CSV text without quoting, split at commas; the header is dropped.
using CsvRow = std::vector<std::string>;
std::vector<CsvRow> CsvRows(const std::string& text);

// ffprobe's facts of a media file, by `kind`:
// "packets": "stream,pts,size,md5,key", one per frame in file order; ffprobe
//   interpolates pts in a laced block, or leaves it empty; key is 1 or 0.
// "streams": "index,codec_type,codec_name,time_base,sample_aspect_ratio".
std::vector<CsvRow> ReadFacts(const std::string& name, const std::string& kind);

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SUPPORT_MEDIA_FILES_H_
