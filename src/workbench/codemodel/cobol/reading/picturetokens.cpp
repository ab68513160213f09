#include "workbench/codemodel/cobol/reading/characters.h"
#include "workbench/codemodel/cobol/reading/filelexer.h"

namespace qmrules::workbench::codemodel::cobol {

void FileLexer::LexPicture() {
  expectsPicture_ = false;
  const char* const word = SkipWord(at_, end_);
  if (word - at_ == 2 && UpperOf(at_[0]) == 'I' && UpperOf(at_[1]) == 'S') {
    LexWord();
    expectsPicture_ = true;
    return;
  }
  if (*at_ == '*' && end_ - at_ > 1 && at_[1] == '>') {
    LexStar();
    expectsPicture_ = true;
    return;
  }
  if (!IsPictureHere()) return;
  const char* const end = PictureEnd(at_);
  if (end != at_) Push(TokenKind::Picture, at_, end);
}

// False for what can only be something else, because the picture is missing.
bool FileLexer::IsPictureHere() const {
  if (firstOnRow_ && row_.continuation) return true;
  const char* const end = SkipWord(at_, end_);
  if (end == at_) return *at_ != '(' && ClassOf(*at_) != CharacterClass::Quote;
  return WordOf(symbols_.Find(std::string_view(at_, static_cast<std::size_t>(end - at_)))) == Word::None;
}

// A picture goes on up to a blank, or to a full stop or comma before a blank. What is glued to it without a blank
// ("S9(4)COMP") is a word of its own.
const char* FileLexer::PictureEnd(const char* begin) const {
  const char* at = begin;
  bool parenthesis = false;
  bool tag = false;
  while (at != end_) {
    switch (ClassOf(*at)) {
      case CharacterClass::Blank:
      case CharacterClass::Quote:
      case CharacterClass::Semicolon:
      case CharacterClass::Equal:
        return at;
      case CharacterClass::Period:
      case CharacterClass::Comma:
        if (at + 1 == end_ || IsBlank(at[1]) || at[1] == '=') return at;
        break;
      case CharacterClass::Open:
        parenthesis = true;
        break;
      case CharacterClass::Close:
        parenthesis = false;
        break;
      case CharacterClass::Colon:
        tag = !tag;
        break;
      case CharacterClass::Letter: {
        const char* end = SkipWord(at, end_);
        if (at != begin && !parenthesis && !tag) {
          while (end[-1] == '-') --end;
          const auto length = static_cast<std::size_t>(end - at);
          if (WordOf(symbols_.Find(std::string_view(at, length))) != Word::None) {
            while (at != begin && (at[-1] == '.' || at[-1] == ',')) --at;
            return at;
          }
        }
        at = end;
        continue;
      }
      default:
        break;
    }
    ++at;
  }
  return at;
}

}  // namespace qmrules::workbench::codemodel::cobol
