#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/cobol/reading/sourceformat.h"
#include "workbench/codemodel/diagnostics.h"
#include "workbench/codemodel/sourcefile.h"
#include "workbench/codemodel/symboltable.h"
#include "workbench/codemodel/token.h"

namespace qmrules::workbench::codemodel::cobol {

struct LexerOptions {
  std::optional<SourceFormat> format;  // nothing: detected
  bool debuggingLines = false;         // take lines with D in the indicator area as text
  bool decimalComma = false;           // "1,5" is one number
  // Columns of fixed form count bytes of the file's encoding; in a double-byte one a wide character takes two.
  bool wideCharactersTakeTwoColumns = false;
};

// A line for the compiler among the text: ">>IF", "$SET", "++INCLUDE", "-INC". Directives that tell the source format
// are worked off and not kept.
struct Directive {
  std::uint32_t row = 0;
  std::uint32_t offset = 0;  // from its ">>", "$", "#", "++" or "-" on
  std::uint32_t length = 0;  // without blanks and a comment behind it
  std::uint32_t token = 0;   // index of the token before which it stands
};

// A file as tokens, before COPY and REPLACE.
struct LexedFile {
  std::shared_ptr<const SourceFile> file;
  SourceFormat format = SourceFormat::Fixed;  // of its beginning
  std::vector<Token> tokens;                  // `inclusion` 0; ended by End
  std::vector<std::string> composed;
  std::vector<Directive> directives;                              // in the order of the text
  std::shared_ptr<const std::vector<std::uint32_t>> commentRows;  // ascending
  bool decimalComma = false;                                      // has DECIMAL-POINT IS COMMA
  bool debuggingMode = false;                                     // has WITH DEBUGGING MODE
  std::vector<Diagnostic> diagnostics;

  std::string_view Text(const Directive& directive) const {
    return file->Text().substr(directive.offset, directive.length);
  }
  std::string_view Text(const Token& token) const {
    return token.Has(kComposed) ? std::string_view(composed[token.text])
                                : file->Text().substr(token.offset, token.length);
  }
};

// Takes any text. Comments, the sequence and identification areas and, as long as no DEBUGGING MODE is asked for,
// debugging lines are passed over; so are comment entries (behind AUTHOR and its like), lines for the listing (EJECT)
// and lines of compiler options (CBL) before a program. Words and literals that go on over lines are one token.
//
// Words are letters, digits, "-", "_", "#", "@", "$" and what lies above ASCII; a "-" at the end of a word belongs to
// it only before ":" (a tag to be replaced). Within EXEC … END-EXEC commas are tokens, and ";" and "." are Other; a
// comment there is "--" to the end of the line for SQL. A full stop at the end of a line ends an EXEC that lacks its
// END-EXEC. Once a file has DECIMAL-POINT IS COMMA, "1,5" is one number up to the end of that program.
LexedFile Lex(std::shared_ptr<const SourceFile> file, const LexerOptions& options, SymbolTable& symbols);

}  // namespace qmrules::workbench::codemodel::cobol
