#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// PERFORM in all its forms.
namespace qmrules::workbench::codemodel::cobol {

// Out of line it stays a PERFORM; inline it becomes a BLOCK that holds its VARs and CONDs and the BLOCK of its body.
void ParsePerform(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
