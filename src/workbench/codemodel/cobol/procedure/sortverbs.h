#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// SORT and MERGE, and how their procedures pass records.
namespace qmrules::workbench::codemodel::cobol {

void ParseSort(StatementParser& parser, NodeId node);
void ParseMerge(StatementParser& parser, NodeId node);
void ParseRelease(StatementParser& parser, NodeId node);
void ParseReturn(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
