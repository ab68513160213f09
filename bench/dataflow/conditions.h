#pragma once

#include <vector>

#include "bars.h"
#include "dataflow/flowmodels.h"

namespace qmrules::bench {

// What runs in which PERFORM range, for all units of the sets, and the conditions of a thousand statements each. Bars:
// ranges_NAME_us, the microseconds of processor time a statement for the ranges; conditions_first_ms and
// conditions_further_ms on the second set.
void MeasureConditions(const std::vector<FlowModels>& sets, Bars& bars);

}  // namespace qmrules::bench
