#pragma once

#include <string>

namespace qmrules::workbench {

// Makes the dataflow database of one project:
//   Report                 one row for each step of a variable's trace, in the order of `ID`; a new trace replaces all
//   ExternalRelationships  for a variable's `VarQMID`, where data from outside goes: `Dir` is "IN", "OUT" or "INOUT"
// Throws platform::Error, naming the file, when there is one already or it cannot be made; nothing is left then.
void CreateDataflowDatabase(const std::string& path);

}  // namespace qmrules::workbench
