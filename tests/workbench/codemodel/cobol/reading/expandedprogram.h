#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/memorysources.h"
#include "workbench/codemodel/cobol/reading/reader.h"
#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/symboltable.h"

namespace qmrules::test {

// The file P.cbl of some sources, read with all that it copies. In free form unless told otherwise.
class ExpandedProgram {
 public:
  explicit ExpandedProgram(MemorySources sources, workbench::codemodel::cobol::ReaderLimits limits = {},
                           workbench::codemodel::cobol::LexerOptions options = FreeForm());
  static workbench::codemodel::cobol::LexerOptions FreeForm();

  const workbench::codemodel::ExpandedText& Text() const { return text_; }
  const workbench::codemodel::SymbolTable& Symbols() const { return symbols_; }
  // The tokens as they are written; a blank parts two that do not touch.
  std::string Words() const;
  // "P.cbl:3:8: gap: What is wrong."
  const std::vector<std::string>& Problems() const { return problems_; }
  // The first token that is written so.
  const workbench::codemodel::Token& Find(std::string_view word) const;
  // Its place, "P.cbl:3:8", with the bytes that stand there: "P.cbl:3:8 ':TAG:-A'".
  std::string PlaceOf(std::string_view word) const;

 private:
  workbench::codemodel::SymbolTable symbols_;
  workbench::codemodel::ExpandedText text_;
  std::vector<std::string> problems_;
};

}  // namespace qmrules::test
