#include "workbench/codemodel/cobol/procedure/sqlcursors.h"

namespace qmrules::workbench::codemodel::cobol {

std::span<const std::uint32_t> SqlCursors::VariablesOf(std::uint32_t name) {
  const std::vector<Token>& tokens = cursor_.Source().tokens;
  const auto wordAt = [&](std::uint32_t index) {
    return tokens[index].kind == TokenKind::Word ? WordOf(tokens[index].symbol) : Word::None;
  };
  for (; scanned_ + 5 < cursor_.Index(); ++scanned_) {
    // EXEC SQL DECLARE name …
    const Word first = wordAt(scanned_);
    if ((first != Word::Exec && first != Word::Execute) || wordAt(scanned_ + 1) != Word::Sql ||
        tokens[scanned_ + 2].kind != TokenKind::Word || tokens[scanned_ + 2].symbol != declare_ ||
        tokens[scanned_ + 3].kind != TokenKind::Word) {
      continue;
    }
    std::vector<std::uint32_t>& variables = variables_[tokens[scanned_ + 3].symbol];
    variables.clear();
    for (scanned_ += 4; scanned_ < cursor_.Index() && wordAt(scanned_) != Word::EndExec; ++scanned_) {
      const bool isVariable = tokens[scanned_ - 1].kind == TokenKind::Colon && tokens[scanned_].kind == TokenKind::Word;
      if (isVariable) variables.push_back(scanned_);
    }
  }
  const auto found = variables_.find(name);
  return found == variables_.end() ? std::span<const std::uint32_t>() : found->second;
}

}  // namespace qmrules::workbench::codemodel::cobol
