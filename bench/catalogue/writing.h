#pragma once

#include <string>

#include "catalogue/measurement.h"

namespace qmrules::bench {

// Writing functions with all that is below them in one transaction, through the repository with its journal and by
// prepared inserts of the finished rows and links without a journal.
void MeasureWriting(const std::string& folder, Report& report);

}  // namespace qmrules::bench
