#include "workbench/repository/filter.h"

#include <array>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "shell/text.h"
#include "workbench/repository/idlist.h"
#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

namespace {

struct OperatorMark {
  std::string_view mark;
  FilterOperator op;
};

// Longer marks first: "<=" is not "<" with a value that begins with "=".
constexpr std::array<OperatorMark, 6> kOperatorMarks = {{{"<>", FilterOperator::NotEqual},
                                                         {"<=", FilterOperator::LessEqual},
                                                         {">=", FilterOperator::GreaterEqual},
                                                         {"=", FilterOperator::Equal},
                                                         {"<", FilterOperator::Less},
                                                         {">", FilterOperator::Greater}}};

constexpr std::array<OperatorMark, 2> kOperatorWords = {{{"like", FilterOperator::Like}, {"in", FilterOperator::In}}};

constexpr std::string_view kUnclosed = "a \")\" is expected for the \"(\" of column {}";

std::string Unescaped(std::string_view raw) {
  std::string value;
  value.reserve(raw.size());
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == '\\') ++i;
    value += raw[i];
  }
  return value;
}

class FilterParser {
 public:
  explicit FilterParser(std::string_view text) : text_(text), columns_(text) {}

  std::unique_ptr<FilterExpression> Parse() {
    if (text_.size() > kFilterBytes) {
      throw Mistake(0, fmt::format("a text of at most {} bytes is expected", kFilterBytes));
    }
    SkipBlanks();
    if (AtEnd()) return nullptr;
    auto expression = std::make_unique<FilterExpression>(Disjunction());
    if (!AtEnd()) throw Mistake(position_, "a \"(\" is expected before this \")\"");
    return expression;
  }

 private:
  FilterExpression Disjunction() {
    FilterOr either;
    do {
      either.children.push_back(Conjunction());
    } while (Take('|'));
    if (either.children.size() == 1) return std::move(either.children.front());
    return {std::move(either)};
  }

  FilterExpression Conjunction() {
    FilterAnd all;
    do {
      all.children.push_back(Term());
    } while (Take('&'));
    if (all.children.size() == 1) return std::move(all.children.front());
    return {std::move(all)};
  }

  FilterExpression Term() {
    SkipBlanks();
    if (At('~')) return Negation();
    if (At('(')) return Group();
    return ReadComparison();
  }

  FilterExpression Negation() {
    Descend();
    FilterNot negation{std::make_unique<FilterExpression>(Term())};
    --depth_;
    return {std::move(negation)};
  }

  FilterExpression Group() {
    const std::size_t opening = position_;
    Descend();
    FilterExpression inner = Disjunction();
    --depth_;
    if (!Take(')')) throw Unclosed(opening);
    SkipBlanks();
    if (!AtEnd() && !At('&') && !At('|') && !At(')')) throw Mistake(position_, "a \"&\" or a \"|\" is expected");
    return inner;
  }

  FilterExpression ReadComparison() {
    const std::size_t end = NameEnd(text_, position_);
    if (end == position_) throw Mistake(position_, "a comparison is expected");
    if (++comparisons_ > kFilterComparisons) {
      throw Mistake(position_, fmt::format("at most {} comparisons are expected", kFilterComparisons));
    }
    Comparison comparison;
    comparison.name = text_.substr(position_, end - position_);
    comparison.nameColumn = columns_.ColumnAt(position_);
    position_ = end;
    comparison.op = Operator();
    comparison.valueColumn = columns_.ColumnAt(position_);
    const std::size_t valueEnd = ValueEnd();
    if (comparison.op == FilterOperator::In) {
      ReadList(comparison, valueEnd);
    } else {
      comparison.value = Unescaped(text_.substr(position_, valueEnd - position_));
    }
    position_ = valueEnd;
    return {std::move(comparison)};
  }

  FilterOperator Operator() {
    const std::size_t behindName = position_;
    SkipBlanks();
    for (const auto& [mark, op] : kOperatorMarks) {
      if (!text_.substr(position_).starts_with(mark)) continue;
      position_ += mark.size();
      return op;
    }
    const std::size_t wordEnd = NameEnd(text_, position_);
    const bool standsAlone = position_ > behindName && wordEnd < text_.size() && text_[wordEnd] == ' ';
    for (const auto& [word, op] : kOperatorWords) {
      if (!standsAlone || !shell::EqualIgnoringCase(text_.substr(position_, wordEnd - position_), word)) continue;
      position_ = wordEnd;
      SkipBlanks();
      return op;
    }
    throw Mistake(position_, "an operator is expected (=, <>, <, <=, >, >=, like, in)");
  }

  // The byte behind the value that begins here.
  std::size_t ValueEnd() const {
    std::size_t depth = 0;
    std::size_t opening = 0;
    std::size_t at = position_;
    for (; at < text_.size(); ++at) {
      const char character = text_[at];
      if (character == '\\') {
        if (++at == text_.size()) throw Mistake(at, "a character is expected behind the \"\\\"");
      } else if (character == '(') {
        if (depth++ == 0) opening = at;
      } else if (depth > 0) {
        if (character == ')') --depth;
      } else if (character == '&' || character == '|' || character == ')') {
        break;
      }
    }
    if (depth > 0) throw Unclosed(opening);
    return at;
  }

  // Reads the list from here to `end`.
  void ReadList(Comparison& comparison, std::size_t end) {
    std::size_t first = position_;
    std::size_t last = end;
    if (const auto closing = EnclosingEnd(end)) {
      ++first;
      last = *closing;
    }
    if (first == last) throw Mistake(first, "a list is expected");
    if (shell::EqualIgnoringCase(comparison.name, "ID")) {
      comparison.ids = ParseIDList(Query(), first, last);
    } else {
      comparison.items = Items(first, last);
    }
  }

  // Where the ")" stands of the parentheses around the whole list from here to `end`; nothing when the list has none.
  std::optional<std::size_t> EnclosingEnd(std::size_t end) const {
    if (position_ == end || text_[position_] != '(') return std::nullopt;
    std::size_t depth = 0;
    std::size_t at = position_;
    for (;; ++at) {
      if (text_[at] == '\\') {
        ++at;
      } else if (text_[at] == '(') {
        ++depth;
      } else if (text_[at] == ')' && --depth == 0) {
        break;
      }
    }
    if (text_.substr(at + 1, end - at - 1).find_first_not_of(' ') != std::string_view::npos) return std::nullopt;
    return at;
  }

  std::vector<ListItem> Items(std::size_t first, std::size_t last) {
    std::vector<ListItem> items;
    std::size_t depth = 0;
    std::size_t itemBegin = first;
    for (std::size_t at = first;; ++at) {
      if (at == last || (text_[at] == ',' && depth == 0)) {
        items.push_back({Unescaped(text_.substr(itemBegin, at - itemBegin)), columns_.ColumnAt(itemBegin)});
        if (at == last) return items;
        itemBegin = at + 1;
      } else if (text_[at] == '\\') {
        ++at;
      } else if (text_[at] == '(') {
        ++depth;
      } else if (text_[at] == ')') {
        --depth;
      }
    }
  }

  // Takes the "~" or "(" that stands here.
  void Descend() {
    if (++depth_ > kFilterDepth) {
      throw Mistake(position_, fmt::format("at most {} \"(\" and \"~\" within each other are expected", kFilterDepth));
    }
    ++position_;
  }

  void SkipBlanks() {
    while (At(' ')) ++position_;
  }
  bool AtEnd() const { return position_ == text_.size(); }
  bool At(char mark) const { return !AtEnd() && text_[position_] == mark; }
  bool Take(char mark) {
    if (!At(mark)) return false;
    ++position_;
    return true;
  }

  QueryText Query() const { return {"filter", text_}; }
  platform::Error Mistake(std::size_t position, std::string_view expectation) const {
    return SyntaxError(Query(), position, expectation);
  }
  platform::Error Unclosed(std::size_t opening) const {
    return Mistake(text_.size(), fmt::format(kUnclosed, ColumnCounter(text_).ColumnAt(opening)));
  }

  std::string_view text_;
  ColumnCounter columns_;
  std::size_t position_ = 0;
  int comparisons_ = 0;
  int depth_ = 0;
};

}  // namespace

std::unique_ptr<FilterExpression> ParseFilter(std::string_view text) {
  return FilterParser(text).Parse();
}

}  // namespace qmrules::workbench::repository
