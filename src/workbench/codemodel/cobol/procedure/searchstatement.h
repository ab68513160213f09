#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// SEARCH and SEARCH ALL.
namespace qmrules::workbench::codemodel::cobol {

// The statement itself is a STAT with the table and its index; its outcomes are an IF of the Kind "Search" behind it.
void ParseSearch(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
