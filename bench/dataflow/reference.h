#pragma once

#include <vector>

#include "bars.h"
#include "dataflow/flowmodels.h"

namespace qmrules::bench {

// All chains of all programs up to about 3,000 lines, asked one by one, beside a plain iterative solver of the whole
// program. Bars: reference_differences, the programs where they are not equal (none may be); question_to_reference, the
// time of a question to that of the solver, at the median of the programs.
void CompareWithPlainSolver(const std::vector<FlowModels>& sets, Bars& bars);

}  // namespace qmrules::bench
