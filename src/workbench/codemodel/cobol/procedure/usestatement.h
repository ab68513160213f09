#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// USE, which tells when a section of the declaratives is executed.
namespace qmrules::workbench::codemodel::cobol {

void ParseUse(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
