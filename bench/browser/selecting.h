#pragma once

#include "browser/browserparts.h"
#include "browser/timetable.h"
#include "catalogue/catalogue.h"

namespace qmrules::bench {

// Everything is selected and asked for, and the view of the selected only goes on and off with 10,000 rules that a
// search has found in half of the rule sets.
void MeasureSelecting(BrowserParts& parts, platform::Repository& repository, const Catalogue& catalogue,
                      TimeTable& table);

}  // namespace qmrules::bench
