#include "workbench/codemodel/cobol/reading/lexedtext.h"

#include <fmt/format.h>

#include <memory>

#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

LexedFile LexText(std::string_view text, LexerOptions options) {
  SymbolTable symbols(CobolWordList());
  return Lex(std::make_shared<SourceFile>("PROG.cbl", std::string(text)), options, symbols);
}

LexedFile LexFixed(std::string_view text) {
  LexerOptions options;
  options.format = SourceFormat::Fixed;
  return LexText(text, options);
}

LexedFile LexFree(std::string_view text) {
  LexerOptions options;
  options.format = SourceFormat::Free;
  return LexText(text, options);
}

std::string Shown(const LexedFile& lexed) {
  std::string shown;
  for (const Token& token : lexed.tokens) {
    if (token.kind == TokenKind::End) break;
    if (!shown.empty()) shown += token.Has(kFirstOnRow) ? '|' : ' ';
    const std::string_view text = lexed.Text(token);
    switch (token.kind) {
      case TokenKind::Number:
        shown += fmt::format("#{}", text);
        break;
      case TokenKind::Picture:
        shown += fmt::format("{{{}}}", text);
        break;
      case TokenKind::Other:
        shown += fmt::format("?{}", text);
        break;
      default:
        shown += text;
        break;
    }
    if (token.Has(kUnclosed)) shown += '!';
  }
  return shown;
}

std::string Fixed(std::string_view text) {
  return Shown(LexFixed(text));
}

std::string Free(std::string_view text) {
  return Shown(LexFree(text));
}

std::string Flagged(const LexedFile& lexed, TokenFlags flag) {
  std::string shown;
  for (const Token& token : lexed.tokens) {
    if (!token.Has(flag)) continue;
    if (!shown.empty()) shown += ' ';
    shown += lexed.Text(token);
  }
  return shown;
}

std::string Diagnosed(const LexedFile& lexed) {
  std::string shown;
  for (const Diagnostic& diagnostic : lexed.diagnostics) {
    shown +=
        fmt::format("{}:{} {}: {}\n", diagnostic.row, diagnostic.column, NameOf(diagnostic.severity), diagnostic.text);
  }
  return shown;
}

}  // namespace qmrules::workbench::codemodel::cobol
