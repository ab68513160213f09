#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/measurement.h"
#include "catalogue/rawstore.h"

namespace qmrules::bench {

// The search over all rules of the project by conditions on the rule's name and on the names of its data elements.
void MeasureSearch(platform::Repository& repository, RawStore& raw, const Catalogue& catalogue, Report& report);

}  // namespace qmrules::bench
