#pragma once

#include "browser/control.h"
#include "browser/timetable.h"
#include "catalogue/catalogue.h"

namespace qmrules::bench {

// A rule set is opened, and a node of each kind clicked, in the filled tree and all over the catalogue.
void MeasureExpansionAndClicks(Control& control, platform::Repository& repository, const Catalogue& catalogue,
                               TimeTable& table);

}  // namespace qmrules::bench
