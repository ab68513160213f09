#pragma once

#include <vector>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/storageplace.h"

namespace qmrules::workbench::flow::cobol {

// The operands of a statement in the order in which they are taken, when a later one reads what an earlier one has got:
//
//   MOVE 3 TO I T (I) J       I | T (I) J            moves to the third T
//   ADD 1 TO A A              A | A                  adds twice
//   ADD A TO A B              A A | A B              adds the old or the new A to B: compilers differ
//   READ F INTO T (I)         the record | T (I)     with the I of the record that has been read
//
// A part reads before it defines. Empty for a statement that has but one. Quick for these.
std::vector<std::vector<NodeId>> PartsOf(const codemodel::ModelImage& model, NodeId statement);

}  // namespace qmrules::workbench::flow::cobol
