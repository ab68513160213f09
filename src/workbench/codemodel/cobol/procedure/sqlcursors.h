#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/cobol/reading/tokencursor.h"

namespace qmrules::workbench::codemodel::cobol {

// The cursors that a program declares for SQL, in whichever division: the variables of a cursor's query are read when
// it is opened.
class SqlCursors {
 public:
  // Looks from the cursor's present place on.
  SqlCursors(const TokenCursor& cursor, SymbolTable& symbols)
      : cursor_(cursor), declare_(symbols.Intern("DECLARE")), scanned_(cursor.Index()) {}

  // Tokens of the variables in the cursor's declaration, behind their colons, in the order of the text; none for a name
  // that is declared nowhere before the present place.
  std::span<const std::uint32_t> VariablesOf(std::uint32_t name);

 private:
  const TokenCursor& cursor_;
  std::uint32_t declare_;  // symbol
  std::uint32_t scanned_;  // tokens before this one are known
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> variables_;
};

}  // namespace qmrules::workbench::codemodel::cobol
