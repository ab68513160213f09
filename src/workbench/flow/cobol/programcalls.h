#pragma once

#include <vector>

#include "workbench/flow/cobol/unitfacts.h"
#include "workbench/flow/flowlanguage.h"

namespace qmrules::workbench::flow::cobol {

// CALL, EXEC CICS LINK and XCTL, in the order of the text.
std::vector<ProgramCall> CallsOf(const UnitFacts& facts);
std::vector<Argument> ParametersOf(const UnitFacts& facts);

}  // namespace qmrules::workbench::flow::cobol
