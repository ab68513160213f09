// Comparing filters and writing them back as text.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/fetch.h"
#include "workbench/repository/filter.h"

namespace qmrules::workbench::repository {

namespace {

// How tightly an expression holds together, by its place in the variant; a negation and a comparison never need "( )".
enum class Binding { Or, And, Not };

Binding BindingOf(const FilterExpression& expression) {
  if (std::holds_alternative<FilterOr>(expression.node)) return Binding::Or;
  if (std::holds_alternative<FilterAnd>(expression.node)) return Binding::And;
  return Binding::Not;
}

std::string_view MarkOf(FilterOperator op) {
  switch (op) {
    case FilterOperator::Equal:
      return "=";
    case FilterOperator::NotEqual:
      return "<>";
    case FilterOperator::Less:
      return "<";
    case FilterOperator::LessEqual:
      return "<=";
    case FilterOperator::Greater:
      return ">";
    case FilterOperator::GreaterEqual:
      return ">=";
    case FilterOperator::Like:
      return " like ";
    case FilterOperator::In:
      break;
  }
  return " in ";
}

class FilterWriter {
 public:
  std::string Take() { return std::move(text_); }

  void operator()(const Comparison& comparison) {
    text_ += comparison.name;
    text_ += MarkOf(comparison.op);
    if (comparison.op == FilterOperator::In) {
      WriteList(comparison);
      return;
    }
    // These would be read as a part of the operator.
    const bool isMistakable = !comparison.value.empty() && comparison.op != FilterOperator::Equal &&
                              std::string_view(" =>").find(comparison.value.front()) != std::string_view::npos;
    if (isMistakable) text_ += '\\';
    text_ += platform::FilterValue(comparison.value);
  }

  void operator()(const FilterNot& negation) {
    text_ += '~';
    Write(*negation.operand, Binding::Not);
  }

  void operator()(const FilterAnd& all) { WriteSeries(all.children, '&', Binding::Not); }
  void operator()(const FilterOr& either) { WriteSeries(either.children, '|', Binding::And); }

 private:
  // In parentheses, behind which an item keeps the blanks that it begins with.
  void WriteList(const Comparison& comparison) {
    char separator = '(';
    const auto add = [&](const std::string& item) {
      text_ += separator;
      text_ += item;
      separator = ',';
    };
    for (const ListItem& item : comparison.items) add(platform::FilterValue(item.text));
    for (const std::int64_t id : comparison.ids) add(std::to_string(id));
    text_ += ')';
  }

  void WriteSeries(const std::vector<FilterExpression>& children, char separator, Binding loosest) {
    bool isFirst = true;
    for (const FilterExpression& child : children) {
      if (!isFirst) text_ += separator;
      isFirst = false;
      Write(child, loosest);
    }
  }

  void Write(const FilterExpression& expression, Binding loosest) {
    const bool isGrouped = BindingOf(expression) < loosest;
    if (isGrouped) text_ += '(';
    std::visit(*this, expression.node);
    if (isGrouped) text_ += ')';
  }

  std::string text_;
};

struct FilterEquality {
  bool operator()(const Comparison& a, const Comparison& b) const {
    return a.name == b.name && a.op == b.op && a.value == b.value && a.items == b.items && a.ids == b.ids;
  }
  bool operator()(const FilterNot& a, const FilterNot& b) const { return *a.operand == *b.operand; }
  bool operator()(const FilterAnd& a, const FilterAnd& b) const { return a.children == b.children; }
  bool operator()(const FilterOr& a, const FilterOr& b) const { return a.children == b.children; }
  template <class A, class B>
  bool operator()(const A&, const B&) const {
    return false;
  }
};

}  // namespace

bool operator==(const FilterExpression& a, const FilterExpression& b) {
  return std::visit(FilterEquality{}, a.node, b.node);
}

std::string ToText(const FilterExpression& expression) {
  FilterWriter writer;
  std::visit(writer, expression.node);
  return writer.Take();
}

}  // namespace qmrules::workbench::repository
