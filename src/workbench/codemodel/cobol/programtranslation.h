#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/cobol/data/datadivision.h"
#include "workbench/codemodel/cobol/procedure/statementparser.h"
#include "workbench/codemodel/frontend.h"

namespace qmrules::workbench::codemodel::cobol {

// Where programs begin and end in a text that can hold several, one after the other or one in the other.
class ProgramBounds {
 public:
  ProgramBounds(const ExpandedText& text, SymbolTable& symbols);

  // True when a program begins at the cursor: at its identification division, or at a later one when that is missing.
  static bool AtProgram(const TokenCursor& cursor);
  // Passes over what belongs to no program. False when none follows.
  static bool PassToProgram(TokenCursor& cursor);
  // True when END PROGRAM with this name comes behind the cursor, so that programs that begin before it are nested.
  bool IsEndedBehind(const TokenCursor& cursor, std::uint32_t name) const;
  // The name behind END PROGRAM at the cursor; SymbolTable::kNone for none.
  std::uint32_t NameAtEnd(const TokenCursor& cursor) const;
  static bool AtEndOfProgram(const TokenCursor& cursor);
  static void PassEndOfProgram(TokenCursor& cursor);

 private:
  std::uint32_t NameOf(const Token& token) const;

  const ExpandedText& text_;
  SymbolTable& symbols_;
  std::unordered_map<std::uint32_t, std::uint32_t> lastEnds_;  // by name: index of the last END PROGRAM
};

// Makes the model of one outermost program with those nested in it.
class ProgramTranslation {
 public:
  ProgramTranslation(TokenCursor& cursor, SymbolTable& symbols, const ProgramBounds& bounds, Diagnostics diagnostics);

  // The cursor stands at the program and is left behind it.
  FrontEnd::Program Translate();

 private:
  void Unit(std::uint32_t parent, int depth);
  void Contents(std::uint32_t unit, int depth);

  TokenCursor& cursor_;
  SymbolTable& symbols_;
  const ProgramBounds& bounds_;
  Diagnostics diagnostics_;
  ModelBuilder model_;
  ProgramScope* scope_ = nullptr;
  StatementParser parser_;
  std::string name_;
};

}  // namespace qmrules::workbench::codemodel::cobol
