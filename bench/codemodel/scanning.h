#pragma once

#include <vector>

#include "bars.h"
#include "codemodel/programs.h"

namespace qmrules::bench {

// A scan of a workspace with these programs in which nothing has changed since the last one, on all cores as a user
// runs it, beside reading and hashing the sources one after the other: bar scan_unchanged. The scan on one thread is
// printed for information.
void MeasureScanning(const std::vector<ProgramSet>& sets, const std::string& folder, Bars& bars);

}  // namespace qmrules::bench
