#ifndef HOST_REPORT_REPORT_TEXT_H_
#define HOST_REPORT_REPORT_TEXT_H_

#include <ostream>

#include "host/play/play_report.h"

namespace kvlhost {

// The human-readable report: module, verdict, title and chapters, then one
// block per stream, then what the plug-in told the engine.
void WriteTextReport(const PlayReport& report, std::ostream& out);

}  // namespace kvlhost

#endif  // HOST_REPORT_REPORT_TEXT_H_
