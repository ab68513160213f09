#pragma once

#include <span>

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// The verbs by what their statements do, one table in one file each.
namespace qmrules::workbench::codemodel::cobol {

std::span<const VerbSpec> ControlVerbs();     // IF, EVALUATE, PERFORM, GO TO, SEARCH, ALTER, EXIT, STOP, GOBACK …
std::span<const VerbSpec> ArithmeticVerbs();  // ADD, SUBTRACT, MULTIPLY, DIVIDE, COMPUTE
std::span<const VerbSpec> DataVerbs();      // MOVE, INITIALIZE, SET, STRING, UNSTRING, INSPECT, EXAMINE, TRANSFORM …
std::span<const VerbSpec> FileVerbs();      // OPEN … START, SORT, MERGE, RELEASE, RETURN, ACCEPT, DISPLAY …
std::span<const VerbSpec> CallVerbs();      // CALL, CANCEL, ENTRY, INVOKE, RAISE, RESUME
std::span<const VerbSpec> MarkupVerbs();    // XML and JSON
std::span<const VerbSpec> EmbeddedVerbs();  // EXEC CICS, SQL, DLI

}  // namespace qmrules::workbench::codemodel::cobol
