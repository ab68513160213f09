#pragma once

#include "browser/control.h"
#include "browser/timetable.h"
#include "catalogue/catalogue.h"

namespace qmrules::bench {

// The control comes into sight: the tree is filled, the first function shown, and the sweep goes over sources that have
// not changed. Leaves the tree filled.
void MeasureShowing(Control& control, platform::Repository& repository, const Catalogue& catalogue, TimeTable& table);

}  // namespace qmrules::bench
