#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// SET in its many forms: indexes, conditions, switches, pointers, the environment.
namespace qmrules::workbench::codemodel::cobol {

void ParseSet(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
