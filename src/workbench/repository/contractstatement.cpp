#include "workbench/repository/contractstatement.h"

#include "shell/casefold.h"
#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

namespace {

class StatementParser {
 public:
  explicit StatementParser(std::string_view text) : text_(text) {}

  ContractStatement Parse() {
    ContractStatement statement;
    ExpectWord("update");
    statement.table = Name("a table's name");
    ExpectWord("set");
    statement.setColumn = Name("a column's name");
    Expect('=');
    statement.setValue = Literal();
    ExpectWord("where");
    statement.listColumn = Name("a column's name");
    statement.isNegated = TakeWord("not");
    ExpectWord("in");
    Expect('(');
    do {
      statement.list.push_back(Literal());
    } while (Take(','));
    Expect(')');
    if (TakeWord("and")) {
      statement.extra.emplace();
      statement.extra->column = Name("a column's name");
      Expect('=');
      statement.extra->value = Literal();
    }
    SkipBlanks();
    if (position_ != text_.size()) throw Fail("the end of the statement is expected");
    return statement;
  }

 private:
  platform::Error Fail(std::string_view expectation) const {
    return SyntaxError({"statement", text_}, position_, expectation);
  }

  void SkipBlanks() {
    while (position_ < text_.size() && std::string_view(" \t\r\n").find(text_[position_]) != std::string_view::npos)
      ++position_;
  }

  std::string_view Word() {
    SkipBlanks();
    return text_.substr(position_, NameEnd(text_, position_) - position_);
  }

  bool TakeWord(std::string_view word) {
    const auto found = Word();
    if (!shell::EqualIgnoringCase(found, word)) return false;
    position_ += found.size();
    return true;
  }

  void ExpectWord(std::string_view word) {
    if (!TakeWord(word)) throw Fail("\"" + std::string(word) + "\" is expected");
  }

  bool Take(char character) {
    SkipBlanks();
    if (position_ >= text_.size() || text_[position_] != character) return false;
    ++position_;
    return true;
  }

  void Expect(char character) {
    if (!Take(character)) throw Fail(std::string("\"") + character + "\" is expected");
  }

  std::string Name(std::string_view what) {
    const auto word = Word();
    if (word.empty()) throw Fail(std::string(what) + " is expected");
    position_ += word.size();
    return std::string(word);
  }

  StatementLiteral Literal() {
    if (!Take('\'')) return {Name("a value"), false};
    StatementLiteral literal{"", true};
    while (true) {
      const std::size_t quote = text_.find('\'', position_);
      if (quote == std::string_view::npos) {
        position_ = text_.size();
        throw Fail("\"'\" is expected");
      }
      literal.text += text_.substr(position_, quote - position_);
      position_ = quote + 1;
      if (position_ >= text_.size() || text_[position_] != '\'') return literal;
      literal.text += '\'';
      ++position_;
    }
  }

  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

ContractStatement ParseContractStatement(std::string_view text) {
  return StatementParser(text).Parse();
}

}  // namespace qmrules::workbench::repository
