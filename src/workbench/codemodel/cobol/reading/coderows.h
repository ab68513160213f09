#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "workbench/codemodel/cobol/reading/lexer.h"

namespace qmrules::workbench::codemodel::cobol {

// A line of code by its areas.
struct CodeRow {
  std::uint32_t row = 0;
  const char* begin = nullptr;  // of the program text area
  const char* end = nullptr;
  const char* areaB = nullptr;  // what begins before it begins in area A
  std::uint32_t missing = 0;    // columns that the line is shorter than the text area
  bool continuation = false;    // "-" in the indicator area
};

// Goes through the lines of a file and gives those with code. Notes comment lines and directives in the LexedFile, and
// follows the directives that change the format.
class CodeRows {
 public:
  CodeRows(LexedFile& lexed, const LexerOptions& options);

  // The next line of code; false at the end, with an empty line.
  bool Next(CodeRow& row);

  SourceFormat Format() const { return format_; }
  void TakeDebuggingLines(bool take) { debuggingLines_ = take; }
  // A program can begin with the next token, and lines of compiler options can stand before it.
  void ExpectProgram() { programAt_ = lexed_.tokens.size(); }
  // Takes the line from `at` on as a directive. What is left of it as code begins at row.begin: nothing, but for ">>D".
  void TakeDirective(CodeRow& row, const char* at);
  void TakeComment(const CodeRow& row);
  void Warn(std::uint32_t row, const char* at, std::string text);
  // The comment lines noted. Ends the noting.
  std::vector<std::uint32_t> TakeCommentRows() { return std::move(commentRows_); }

 private:
  bool TakeFixed(CodeRow& row, const char* begin, const char* end);
  bool TakeFree(CodeRow& row, const char* begin, const char* end);
  bool TakeDirectiveLine(CodeRow& row, const char* at, const char* end);
  bool TakeIndicator(CodeRow& row, const char* indicator);
  bool IsOptionsLine(const char* at, const char* end) const;
  const char* SplitColumns(CodeRow& row, const char* begin, const char* end) const;
  std::uint32_t ColumnBehind(std::uint32_t column, const char*& at, const char* end) const;

  LexedFile& lexed_;
  std::vector<std::uint32_t> commentRows_;
  const char* text_;
  SourceFormat format_;
  std::uint32_t row_ = 0;
  std::size_t programAt_ = 0;
  bool debuggingLines_;
  bool twoColumns_;
  bool oneByteOneColumn_;  // no tabs, nothing above ASCII
};

// True where a line for the compiler begins that has no ">>": "$SET", "$IF", "++INCLUDE", "-INC".
bool IsDirectiveWord(const char* at, const char* end);

}  // namespace qmrules::workbench::codemodel::cobol
