#pragma once

#include "workbench/codemodel/cobol/data/programscope.h"
#include "workbench/codemodel/cobol/reading/tokencursor.h"

namespace qmrules::workbench::codemodel::cobol {

struct ProgramHead {
  std::uint32_t name = SymbolTable::kNone;  // symbol of the program's name; kNone when it has none
  std::string spelled;                      // as written, without quotes
  NodeId identification = 0;
  bool isFunction = false;
  bool isClass = false;  // CLASS-ID, INTERFACE-ID or METHOD-ID
  bool common = false, initial = false, recursive = false;
};

// Parses from IDENTIFICATION DIVISION (or PROGRAM-ID, where the header is missing) up to the procedure division's
// header, the next program's, END PROGRAM or the end, each division when it is there, and leaves the cursor there.
// Makes the nodes IDENTIFICATION (always), ENVIRONMENT and DATA, declares all names in the scope and lays the data out.
// A division's header whose word is garbled is taken for the procedure division's behind the others: the cursor is left
// at the garbled word then.
ProgramHead ParseProgramHead(TokenCursor& cursor, ModelBuilder& model, ProgramScope& scope, SymbolTable& symbols);

}  // namespace qmrules::workbench::codemodel::cobol
