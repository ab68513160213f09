#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

namespace qmrules::workbench::codemodel::cobol {

// Makes the occurrences that CORRESPONDING stands for below the open statement: for each pair of items of one name in
// the two groups a VAR of the first (Source, read) and behind it one of the second, both implicit. Items pair below
// paired groups; those with REDEFINES, RENAMES, OCCURS or USAGE INDEX, and what lies below them, do not. A pair is made
// where at least one of the two has no items below it; when the statement computes, where both are numbers.
struct CorrespondingGroups {
  NodeId from = 0;  // VARs
  NodeId to = 0;
  Role role = Role::Target;  // of the second item of a pair
  VarUsage usage = VarUsage::In;
  bool computes = false;
};
void CorrespondingItems(StatementParser& parser, const CorrespondingGroups& groups);

}  // namespace qmrules::workbench::codemodel::cobol
