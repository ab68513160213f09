#include "workbench/codemodel/cobol/reading/fragmentlexer.h"

#include <algorithm>
#include <memory>

#include "workbench/codemodel/cobol/reading/characters.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// True for a text that is one word whatever stands around it: letters, digits and hyphens, first a letter.
bool IsPlainWord(std::string_view text) {
  return IsLetter(text.front()) && text.back() != '-' &&
         std::ranges::all_of(text, [](char c) { return IsLetter(c) || IsDigit(c) || c == '-'; });
}

// True for a text that is one PICTURE: letters and digits, with numbers in parentheses.
bool IsPlainPicture(std::string_view text) {
  char before = ' ';
  for (const char character : text) {
    const bool isParenthesis =
        character == '(' ? IsLetter(before) || before == '9' : character == ')' && IsDigit(before);
    const bool goesOn =
        IsLetter(character) ? before != '(' && (before != ')' || UpperOf(character) == 'V') : IsDigit(character);
    if (!isParenthesis && !goesOn) return false;
    before = character;
  }
  return before != '(' && std::ranges::count(text, '(') == std::ranges::count(text, ')');
}

// What brings the lexer into the context.
std::string_view LeadOf(FragmentContext context) {
  switch (context) {
    case FragmentContext::Picture:
      return " PIC ";
    case FragmentContext::Exec:
      return " EXEC SQL ";
    case FragmentContext::Plain:
      break;
  }
  return " TO ";
}

}  // namespace

void LexFragment(std::string_view text, FragmentContext context, const LexerOptions& options, SymbolTable& symbols,
                 std::vector<Token>& tokens) {
  tokens.clear();
  Token whole;
  whole.length = static_cast<std::uint32_t>(text.size());
  if (context == FragmentContext::Picture ? IsPlainPicture(text) : IsPlainWord(text)) {
    whole.kind = context == FragmentContext::Picture ? TokenKind::Picture : TokenKind::Word;
    if (whole.kind == TokenKind::Word) whole.symbol = symbols.Intern(text);
    tokens.push_back(whole);
    return;
  }
  const std::string_view lead = LeadOf(context);
  LexerOptions free = options;
  free.format = SourceFormat::Free;
  std::string line(lead);
  line += text;
  const LexedFile lexed = Lex(std::make_shared<const SourceFile>("", std::move(line)), free, symbols);
  const auto skipped = static_cast<std::uint32_t>(lead.size());
  for (const Token& token : lexed.tokens) {
    if (token.kind == TokenKind::End || token.offset < skipped) continue;
    tokens.push_back(token);
    tokens.back().offset -= skipped;
  }
  if (!tokens.empty() && tokens.front().offset == 0) return;
  whole.kind = TokenKind::Other;
  tokens.assign(1, whole);
}

}  // namespace qmrules::workbench::codemodel::cobol
