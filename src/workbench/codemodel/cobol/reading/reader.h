#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/diagnostics.h"
#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/frontend.h"
#include "workbench/codemodel/symboltable.h"

namespace qmrules::workbench::codemodel::cobol {

class Copybooks;

struct ReaderLimits {
  std::uint32_t depth = 64;            // COPY within COPY
  std::uint32_t inclusions = 100'000;  // COPY statements worked off in one program
  std::size_t tokens = 50'000'000;     // of the expanded text; besides, see growth
  std::size_t growth = 64;             // the expanded text has at most this many times the tokens of all files that it
                                       // is made of, and 100,000 more
};

// Reads programs: lexes their files and works off COPY, EXEC SQL INCLUDE, REPLACE, and the directives of conditional
// compilation. Keeps the tokens of copybooks for the programs that come after. Used by one thread.
class ProgramReader {
 public:
  ProgramReader(SourceProvider& provider, SymbolTable& symbols, LexerOptions options, ReaderLimits limits = {});
  ~ProgramReader();

  // The expanded text of a file. What cannot be had (a missing copybook, one that includes itself, an expansion past
  // the limits) is left out and told in a gap at the COPY. Throws platform::Error when the file itself cannot be read.
  ExpandedText Read(std::string_view file, Diagnostics& diagnostics);

 private:
  SourceProvider& provider_;
  SymbolTable& symbols_;
  LexerOptions options_;
  ReaderLimits limits_;
  std::unique_ptr<Copybooks> copybooks_;
};

}  // namespace qmrules::workbench::codemodel::cobol
