#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/measurement.h"

namespace qmrules::bench {

// How much more memory a walk over all rules takes at its peak than one over 10,000 of them: read as it goes, put aside
// by a write in the middle, and sorted.
void MeasureMemory(platform::Repository& repository, const Catalogue& catalogue, Report& report);

}  // namespace qmrules::bench
