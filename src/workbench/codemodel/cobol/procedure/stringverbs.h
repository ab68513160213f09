#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// The statements that work on the characters of their items.
namespace qmrules::workbench::codemodel::cobol {

void ParseString(StatementParser& parser, NodeId node);
void ParseUnstring(StatementParser& parser, NodeId node);
void ParseInspect(StatementParser& parser, NodeId node);
void ParseExamine(StatementParser& parser, NodeId node);
void ParseTransform(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
