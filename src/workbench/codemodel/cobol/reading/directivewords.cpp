#include "workbench/codemodel/cobol/reading/directivewords.h"

#include <algorithm>

#include "workbench/codemodel/cobol/reading/characters.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

bool IsNumber(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return IsDigit(c) || c == '.'; }) && std::ranges::any_of(text, IsDigit);
}

// Where a word ends that begins at `first`. A full stop belongs to it only before a digit.
std::size_t EndOfWord(std::string_view text, std::size_t first) {
  std::size_t end = first;
  while (end < text.size() &&
         (IsWordCharacter(text[end]) || (text[end] == '.' && end + 1 < text.size() && IsDigit(text[end + 1])))) {
    ++end;
  }
  return end;
}

}  // namespace

DirectiveWords::DirectiveWords(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char character = text[at];
    if (IsBlank(character)) {
      ++at;
    } else if (character == '\'' || character == '"') {
      const std::size_t end = std::min(text.find(character, at + 1), text.size());
      items_.push_back({Kind::Literal, std::string(text.substr(at + 1, end - at - 1))});
      at = end + 1;
    } else if (const std::size_t end = EndOfWord(text, at); end > at) {
      const std::string_view word = text.substr(at, end - at);
      at = end;
      const bool isPrefix = word.size() == 1 && end < text.size() && (text[end] == '\'' || text[end] == '"');
      if (isPrefix && (items_.empty() || items_.back().text != "CONSTANT")) continue;  // B'1'
      Item item{IsNumber(word) ? Kind::Number : Kind::Name, std::string(word)};
      std::ranges::transform(item.text, item.text.begin(), UpperOf);
      items_.push_back(std::move(item));
    } else {
      const std::string_view two = text.substr(at, 2);
      const std::size_t size = two == "<=" || two == ">=" || two == "<>" ? 2 : 1;
      items_.push_back({Kind::Sign, std::string(text.substr(at, size))});
      at += size;
    }
  }
  items_.emplace_back();
}

bool DirectiveWords::Accept(Kind kind, std::string_view text) {
  if (Current().kind != kind || Current().text != text) return false;
  Next();
  return true;
}

}  // namespace qmrules::workbench::codemodel::cobol
