#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// Statements of the communication facility and of the report writer.
namespace qmrules::workbench::codemodel::cobol {

void ParseSend(StatementParser& parser, NodeId node);
void ParseReceive(StatementParser& parser, NodeId node);
void ParseEnable(StatementParser& parser, NodeId node);  // and DISABLE
void ParsePurge(StatementParser& parser, NodeId node);
void ParseInitiate(StatementParser& parser, NodeId node);  // and TERMINATE
void ParseGenerate(StatementParser& parser, NodeId node);
void ParseSuppress(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
