#pragma once

#include <vector>

#include "bars.h"
#include "dataflow/flowmodels.h"

namespace qmrules::bench {

// Backward and forward questions about single programs. Bars on the second program (30,000 lines): first_ms, the first
// backward question, with all that it builds; further_ms, the median of further ones; beside the third one (100,000
// lines): question_growth, the medians of further questions (their means stand in the table: they grow with the
// answers), and memory_growth, the bytes a line that are kept.
void MeasureQuestions(const std::vector<FlowModels>& programs, Bars& bars);

}  // namespace qmrules::bench
