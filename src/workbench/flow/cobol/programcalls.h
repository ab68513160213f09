#pragma once

#include <vector>

#include "workbench/flow/cobol/unitfacts.h"
#include "workbench/flow/flowlanguage.h"

namespace qmrules::workbench::flow::cobol {

// CALL, EXEC CICS LINK and XCTL, in the order of the text; INVOKE and EXEC SQL CALL without a program: what they lead
// to is none of the workspace.
std::vector<ProgramCall> CallsOf(const UnitFacts& facts);
std::vector<Argument> ParametersOf(const UnitFacts& facts);
// Of an ENTRY.
std::vector<Argument> ParametersOfEntry(const UnitFacts& facts, NodeId entry);

}  // namespace qmrules::workbench::flow::cobol
