#pragma once

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// EVALUATE in all its forms.
namespace qmrules::workbench::codemodel::cobol {

// One COND for each group of WHENs that share their statements. Its text tells when they are executed, its VARs are
// those of the objects, and implicit ones for those of the subjects:
//
//   EVALUATE TYPE ALSO TRUE
//     WHEN 'A' ALSO LEVEL > 5        "TYPE = 'A' AND LEVEL > 5 OR TYPE >= 'C' AND TYPE <= 'F'"
//     WHEN 'C' THRU 'F' ALSO ANY
//       …
void ParseEvaluate(StatementParser& parser, NodeId node);

}  // namespace qmrules::workbench::codemodel::cobol
