#include "workbench/repository/fetchlist.h"

#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

namespace {

class FetchListParser {
 public:
  explicit FetchListParser(std::string_view text) : text_(text), columns_(text) {}

  std::vector<FetchItem> Parse() {
    std::vector<FetchItem> items;
    if (text_.empty()) return items;
    do {
      items.push_back(Item());
    } while (Take(','));
    return items;
  }

 private:
  FetchItem Item() {
    FetchItem item;
    item.column = columns_.ColumnAt(position_);
    if (Take('>')) {
      item.sort = Sort::Ascending;
    } else if (Take('<')) {
      item.sort = Sort::Descending;
    }
    item.name = Name("an attribute name is expected");
    const bool hasAlias = Take(':');
    item.alias = hasAlias ? Name("an alias is expected") : item.name;
    if (position_ < text_.size() && text_[position_] != ',') {
      throw Mistake(hasAlias ? "a \",\" is expected" : "a \",\" or a \":\" is expected");
    }
    return item;
  }

  bool Take(char mark) {
    if (position_ == text_.size() || text_[position_] != mark) return false;
    ++position_;
    return true;
  }

  std::string Name(std::string_view expectation) {
    const std::size_t end = NameEnd(text_, position_);
    if (end == position_) throw Mistake(expectation);
    std::string name(text_.substr(position_, end - position_));
    position_ = end;
    return name;
  }

  platform::Error Mistake(std::string_view expectation) const {
    return SyntaxError({"fetch list", text_}, position_, expectation);
  }

  std::string_view text_;
  ColumnCounter columns_;
  std::size_t position_ = 0;
};

}  // namespace

std::vector<FetchItem> ParseFetchList(std::string_view text) {
  return FetchListParser(text).Parse();
}

}  // namespace qmrules::workbench::repository
