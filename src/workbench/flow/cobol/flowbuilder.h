#pragma once

#include <cstdint>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/flowgraph.h"

namespace qmrules::workbench::flow::cobol {

// The flow of one unit of a COBOL program, in time linear in its nodes.
//
// What the language leaves open is taken as the compilers of today do it, and where they differ, both ways are there:
//   - a PERFORM returns at the end of its range only while it is the innermost one that is being performed;
//   - EXIT PROGRAM of a program that is not called does nothing;
//   - what is added to several targets and is one of them counts as it was, or as it has become;
//   - a USE procedure runs, perhaps, after each statement on a file that it can be for, also where the statement has a
//     phrase of its own: that one takes its one condition only.
// Labels of HANDLE are where each CICS command of the unit can lead that does not ask for its outcome with RESP or
// NOHANDLE; that any other statement can abend is a gap. Those of WHENEVER hold for the SQL statements behind it in the
// text, up to the next WHENEVER of the same condition. USE FOR DEBUGGING is a gap of the procedures that it is for.
FlowGraph BuildFlow(const codemodel::ModelImage& model, std::uint32_t unit);

}  // namespace qmrules::workbench::flow::cobol
