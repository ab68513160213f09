#pragma once

#include <QString>

#include "workbench/scan/scanner.h"

namespace qmrules::desktop {

// What a scan came to, for the reader.
struct ScanSummary {
  QString text;      // one line
  QString problems;  // a line for each thing that went wrong; "" when nothing did
};

ScanSummary SummaryOf(const workbench::ScanReport& report);

}  // namespace qmrules::desktop
