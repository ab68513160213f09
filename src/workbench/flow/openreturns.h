#pragma once

#include <vector>

#include "workbench/flow/rangebodies.h"

// Where compilers differ in whether a PERFORM returns.
//
//   MAIN.  PERFORM A.              A is left by GO TO and stays open. What B falls through into comes by the end of A
//   A.     GO TO C.                while B is being performed: the flow graph goes on to C, since B is the innermost
//   B.     …                       one; a compiler that keeps a return for each label goes back behind PERFORM A.
//   …
//   C.     PERFORM B THRU A.
namespace qmrules::workbench::flow {

// A gap of the kind OpenReturn for each end of a label where a range that is being performed can pass the end of
// another one, which is being performed around it. None where returns are not matched at all.
std::vector<FlowGap> OpenReturns(const RangeBodies& bodies);

}  // namespace qmrules::workbench::flow
