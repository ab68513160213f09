#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench::codemodel::cobol {

// A directive's words, one after the other.
class DirectiveWords {
 public:
  enum class Kind : std::uint8_t { End, Name, Number, Literal, Sign };
  struct Item {
    Kind kind = Kind::End;
    std::string text;  // a name in upper case, a literal without quotes
  };

  explicit DirectiveWords(std::string_view text);

  const Item& Current() const { return items_[index_]; }
  bool IsAtEnd() const { return Current().kind == Kind::End; }
  void Next() {
    if (!IsAtEnd()) ++index_;
  }
  bool Accept(Kind kind, std::string_view text);
  bool AcceptName(std::string_view name) { return Accept(Kind::Name, name); }
  bool AcceptSign(std::string_view sign) { return Accept(Kind::Sign, sign); }

 private:
  std::vector<Item> items_;  // ended by End
  std::size_t index_ = 0;
};

}  // namespace qmrules::workbench::codemodel::cobol
