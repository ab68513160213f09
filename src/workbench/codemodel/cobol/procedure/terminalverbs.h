#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// Statements that talk to the operator, the terminal and the surroundings of the run, and those that trace it.
namespace qmrules::workbench::codemodel::cobol {

void ParseAccept(StatementParser& parser, NodeId node);
void ParseDisplay(StatementParser& parser, NodeId node);
void ParseExhibit(StatementParser& parser, NodeId node);
void ParseTrace(StatementParser& parser, NodeId node);  // READY and RESET

}  // namespace qmrules::workbench::codemodel::cobol
