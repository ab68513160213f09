#include "workbench/repository/querysyntax.h"

#include <fmt/format.h>

#include "shell/text.h"

namespace qmrules::workbench::repository {

namespace {

bool IsNameByte(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '_' || character == '-' || character == '.' ||
         static_cast<unsigned char>(character) >= 0x80;
}

}  // namespace

platform::Error SyntaxError(const QueryText& query, std::size_t position, std::string_view expectation) {
  return ColumnError(query, ColumnCounter(query.text).ColumnAt(position), expectation);
}

platform::Error ColumnError(const QueryText& query, std::size_t column, std::string_view reason) {
  return platform::Error(fmt::format("{} \"{}\" column {}: {}", query.language,
                                     shell::CutWithEllipsis(query.text, kShownCharacters), column, reason));
}

std::size_t NameEnd(std::string_view text, std::size_t position) {
  while (position < text.size() && IsNameByte(text[position])) ++position;
  return position;
}

std::size_t ColumnCounter::ColumnAt(std::size_t position) {
  column_ += shell::CharacterCount(text_.substr(position_, position - position_));
  position_ = position;
  return column_;
}

}  // namespace qmrules::workbench::repository
