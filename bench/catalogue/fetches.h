#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/measurement.h"
#include "catalogue/rawstore.h"

namespace qmrules::bench {

// The fetches of the tree, the panes and the reports, each beside the statement that one would write for it by hand.
void MeasureFetches(platform::Repository& repository, RawStore& raw, const Catalogue& catalogue, Report& report);

}  // namespace qmrules::bench
