#ifndef HOST_REPORT_REPORT_JSON_H_
#define HOST_REPORT_REPORT_JSON_H_

#include <nlohmann/json.hpp>

#include "host/play/play_report.h"

namespace kvlhost {

// The whole report as one JSON document, with the same names as the text
// report; absent facts are left out rather than given as null.
nlohmann::json ReportJson(const PlayReport& report);

}  // namespace kvlhost

#endif  // HOST_REPORT_REPORT_JSON_H_
