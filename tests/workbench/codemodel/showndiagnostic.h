#pragma once

#include <string>

#include "workbench/codemodel/diagnostics.h"

namespace qmrules::workbench::codemodel {

// "warning a.cbl:2:13: text".
inline std::string Show(const Diagnostic& diagnostic) {
  return std::string(NameOf(diagnostic.severity)) + " " + diagnostic.file + ":" + std::to_string(diagnostic.row) + ":" +
         std::to_string(diagnostic.column) + ": " + diagnostic.text;
}

}  // namespace qmrules::workbench::codemodel
