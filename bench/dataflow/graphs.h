#pragma once

#include <vector>

#include "bars.h"
#include "dataflow/flowmodels.h"

namespace qmrules::bench {

// Building the flow graphs of all units, beside one pass over the records of the models. Bars: graph_NAME_us, the
// microseconds of processor time a statement; graph_memory, the bytes a point of the last set to those of the
// first.
void MeasureGraphs(const std::vector<FlowModels>& sets, Bars& bars);

}  // namespace qmrules::bench
