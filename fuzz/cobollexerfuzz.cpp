// Any bytes as a source text, in the form and with the options that the first byte tells: the tokens lie in the text in
// their order.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace {

using qmrules::workbench::codemodel::SourceFile;
using qmrules::workbench::codemodel::SymbolTable;
using qmrules::workbench::codemodel::Token;
using qmrules::workbench::codemodel::TokenKind;
using qmrules::workbench::codemodel::cobol::CobolWordList;
using qmrules::workbench::codemodel::cobol::Lex;
using qmrules::workbench::codemodel::cobol::LexedFile;
using qmrules::workbench::codemodel::cobol::LexerOptions;
using qmrules::workbench::codemodel::cobol::SourceFormat;

LexerOptions OptionsOf(std::uint8_t byte) {
  LexerOptions options;
  if ((byte & 3) != 3) options.format = static_cast<SourceFormat>(byte & 3);
  options.debuggingLines = (byte & 4) != 0;
  options.decimalComma = (byte & 8) != 0;
  options.wideCharactersTakeTwoColumns = (byte & 16) != 0;
  return options;
}

void Require(bool condition) {
  if (!condition) std::abort();
}

void RequireSound(const LexedFile& lexed) {
  Require(!lexed.tokens.empty() && lexed.tokens.back().kind == TokenKind::End);
  std::uint32_t end = 0;
  for (const Token& token : lexed.tokens) {
    Require(token.offset >= end);
    end = token.offset + token.length;
    Require(end <= lexed.file->Text().size());
    if (token.kind == TokenKind::End) break;
    Require(token.length > 0 && token.row == lexed.file->RowOf(token.offset) && !lexed.Text(token).empty());
  }
  for (const auto& directive : lexed.directives) {
    Require(directive.token < lexed.tokens.size() && !lexed.Text(directive).empty());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  SymbolTable symbols(CobolWordList());
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  RequireSound(Lex(std::make_shared<SourceFile>("FUZZ.cbl", text), OptionsOf(*data), symbols));
  return 0;
}
