#include "workbench/codemodel/cobol/reading/expandedprogram.h"

#include <fmt/format.h>

#include <stdexcept>
#include <utility>

#include "workbench/codemodel/cobol/reading/words.h"
#include "workbench/codemodel/diagnostics.h"

namespace qmrules::test {

using namespace workbench::codemodel;
using namespace workbench::codemodel::cobol;

LexerOptions ExpandedProgram::FreeForm() {
  LexerOptions options;
  options.format = SourceFormat::Free;
  return options;
}

ExpandedProgram::ExpandedProgram(MemorySources sources, ReaderLimits limits, LexerOptions options)
    : symbols_(CobolWordList()) {
  Diagnostics diagnostics;
  text_ = ProgramReader(sources, symbols_, std::move(options), limits).Read("P.cbl", diagnostics);
  for (const Diagnostic& each : diagnostics.Take()) {
    problems_.push_back(
        fmt::format("{}:{}:{}: {}: {}", each.file, each.row, each.column, NameOf(each.severity), each.text));
  }
}

std::string ExpandedProgram::Words() const {
  std::string words;
  for (const Token& token : text_.tokens) {
    if (token.kind == TokenKind::End) break;
    if (!words.empty() && !token.Has(kAdjacent)) words += ' ';
    words += text_.Text(token);
  }
  return words;
}

const Token& ExpandedProgram::Find(std::string_view word) const {
  for (const Token& token : text_.tokens) {
    if (token.kind != TokenKind::End && text_.Text(token) == word) return token;
  }
  throw std::out_of_range(fmt::format("{} is not in: {}", word, Words()));
}

std::string ExpandedProgram::PlaceOf(std::string_view word) const {
  const Token& token = Find(word);
  const SourceFile& file = text_.File(token);
  return fmt::format("{}:{}:{} '{}'", file.Name(), token.row, file.Column(token.offset),
                     file.Text().substr(token.offset, token.length));
}

}  // namespace qmrules::test
