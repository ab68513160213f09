#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "workbench/codemodel/cobol/reading/characters.h"
#include "workbench/codemodel/cobol/reading/coderows.h"
#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

// Makes the tokens of one file.
class FileLexer {
 public:
  FileLexer(std::shared_ptr<const SourceFile> file, const LexerOptions& options, SymbolTable& symbols);
  LexedFile Run();

 private:
  enum class Exec : std::uint8_t { None, Head, Sql, Other };

  // Rows.
  bool NextRow();
  void LexRow();
  bool TakeLine(const char* at);

  // Tokens.
  Token& Push(TokenKind kind, const char* begin, const char* end);
  // Takes the last token back. Directives behind it move up with what follows.
  void DropToken();
  void LexWord();
  void LexNumber();
  void LexPicture();
  void LexLiteral(const char* begin);
  void LexPeriod();
  void LexComma();
  void LexStar();
  void LexRelation(char sign);
  void LexOther(bool control);
  void LexSign(CharacterClass kind);
  const char* SkipFraction(const char* at) const;
  bool TouchesOperand() const;

  const char* PictureEnd(const char* begin) const;
  bool IsPictureHere() const;

  // Text that goes on over lines.
  void ContinueToken();
  void ContinueWord(std::string_view joint);
  void ContinuePicture();
  bool ReopenLiteral();
  void GatherLiteral(std::string text, const char* lastEnd);
  bool TakeLiteralRow(std::string& text, const char* from, const char*& lastEnd);
  void ConcatenateLiteral();
  bool NextContinuation();
  std::string TakeText(Token& token);
  void Compose(std::string text, const char* end);

  // What words mean for the reading of the text behind them.
  void TakeWord(Word word);
  void TakeDivision();
  void EndProgram();
  void TakeListing(Word word);
  void SkipCommentEntry();
  bool EndsCommentEntry() const;
  Word WordBefore(std::size_t count) const;  // the last token

  LexerOptions options_;
  SymbolTable& symbols_;
  LexedFile lexed_;
  CodeRows rows_;
  const char* text_;

  CodeRow row_;
  const char* at_ = nullptr;           // in the row
  const char* end_ = nullptr;          // of the row
  const char* previousEnd_ = nullptr;  // of the last token, where nothing has come behind it
  bool firstOnRow_ = false;
  bool separated_ = false;  // a comma, semicolon or comment stands behind the last token
  bool expectsPicture_ = false;
  char decimalPoint_ = '.';
  Exec exec_ = Exec::None;
  bool inIdentification_ = false;
  bool programEnds_ = false;    // behind END PROGRAM
  std::uint32_t programs_ = 0;  // begun and not ended
};

}  // namespace qmrules::workbench::codemodel::cobol
