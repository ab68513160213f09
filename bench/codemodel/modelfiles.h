#pragma once

#include "bars.h"
#include "codemodel/programs.h"

namespace qmrules::bench {

// Opening the model file of the set's program: bar open_ms.
void MeasureOpening(const ProgramSet& set, const std::string& folder, Bars& bars);

}  // namespace qmrules::bench
