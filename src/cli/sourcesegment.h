#pragma once

#include <cstdint>
#include <string>

#include "cli/environment.h"
#include "segments/rulesegments.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::cli {

// A run of source lines as a command line names it.
struct SegmentPlace {
  std::string file;
  std::int32_t fromRow = 0;  // from 1, both inclusive
  std::int32_t toRow = 0;
};

// Reads "FILE:FROM-TO", or "FILE:ROW" for one line. Throws UsageError for any other text.
SegmentPlace ParseSegmentPlace(const std::string& text);

// The segment of these lines of a registered source. `program` names one of the programs of a file that has several.
// The file is named from the source folder or from the current folder on. Throws platform::Error for a file that is not
// registered in the project, for a choice of programs that is left open, for lines behind the end of the file, and for
// a segment with too many characters.
segments::Segment ReadSegment(workbench::EmbeddedHost& host, const CliEnvironment& environment,
                              const SegmentPlace& place, const std::string& program);

}  // namespace qmrules::cli
