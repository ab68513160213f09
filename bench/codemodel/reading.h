#pragma once

#include "bars.h"
#include "codemodel/programs.h"

namespace qmrules::bench {

// What reading and modelling costs beside the tokeniser alone on the same texts, without and with the model files
// written to a folder. Adds the bars model_NAME, file_NAME for each set, and growth for the last set beside the one
// before it: the time per line.
void MeasureReading(const std::vector<ProgramSet>& sets, const std::string& folder, Bars& bars);

}  // namespace qmrules::bench
