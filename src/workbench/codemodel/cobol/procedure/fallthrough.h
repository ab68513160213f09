#pragma once

#include "workbench/codemodel/modelbuilder.h"

namespace qmrules::workbench::codemodel::cobol {

// True when control can reach the end of a procedure division's text by falling through from its entry: no GOBACK, GO
// TO or the like stands in every way there. A paragraph that is only performed is not reached so. `entry` is the first
// PAR or SECTION that the program begins with; `division` is the open DIVISION, its procedure names tied.
bool ReachesEnd(const ModelBuilder& model, NodeId division, NodeId entry);

}  // namespace qmrules::workbench::codemodel::cobol
