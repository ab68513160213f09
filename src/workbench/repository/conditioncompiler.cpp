#include "workbench/repository/conditioncompiler.h"

#include <fmt/format.h>

#include <bit>

#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

using platform::AttrType;
using platform::Error;

namespace {

// Parts joined by AND or OR. They are paired off in parentheses, since a database bounds the depth of an expression and
// takes a plain row of a thousand parts for one a thousand deep.
class Junction {
 public:
  explicit Junction(bool isAnd) : joint_(isAnd ? " AND " : " OR ") {}
  void Add(SqlPiece part) {
    if (!part.text.empty()) parts_.push_back(std::move(part));
  }
  SqlPiece Result() {
    SqlPiece result;
    if (!parts_.empty()) AppendParts(0, parts_.size(), result);
    return result;
  }

 private:
  void AppendParts(std::size_t first, std::size_t end, SqlPiece& to) {
    if (end - first == 1) {
      to.text += parts_[first].text;
      for (auto& parameter : parts_[first].parameters) to.parameters.push_back(std::move(parameter));
      return;
    }
    const std::size_t middle = first + (end - first) / 2;
    to.text += '(';
    AppendParts(first, middle, to);
    to.text += joint_;
    AppendParts(middle, end, to);
    to.text += ')';
  }

  std::string_view joint_;
  std::vector<SqlPiece> parts_;
};

// The levels that stand around what is being compiled. A database's parser keeps the symbols of every open level on a
// stack of its own, about three for each, and refuses what does not fit.
class Nesting {
 public:
  // An AND or OR of so many parts, which Junction pairs off.
  void EnterJunction(std::size_t parts) { Enter(JunctionLevels(parts)); }
  void LeaveJunction(std::size_t parts) { levels_ -= JunctionLevels(parts); }
  // A related object is a statement within the statement.
  void EnterRelated() { Enter(kRelatedLevels); }
  void LeaveRelated() { levels_ -= kRelatedLevels; }

 private:
  static constexpr int kRelatedLevels = 4;

  static int JunctionLevels(std::size_t parts) { return static_cast<int>(std::bit_width(parts - 1)); }
  void Enter(int levels) {
    levels_ += levels;
    if (levels_ > kCompiledNesting)
      throw Error("conditions stand too deep within each other; state it with fewer levels");
  }

  int levels_ = 0;
};

AttributeTest ToTest(const Comparison& comparison, bool isNegated) {
  AttributeTest test;
  test.value = comparison.value;
  test.isNegated = isNegated;
  for (const auto& item : comparison.items) test.items.push_back(item.text);
  switch (comparison.op) {
    case FilterOperator::Equal:
      break;
    case FilterOperator::NotEqual:
      test.isNegated = !isNegated;
      break;
    case FilterOperator::Less:
      test.op = TestOperator::Less;
      break;
    case FilterOperator::GreaterEqual:
      test.op = TestOperator::Less;
      test.isNegated = !isNegated;
      break;
    case FilterOperator::Greater:
      test.op = TestOperator::Greater;
      break;
    case FilterOperator::LessEqual:
      test.op = TestOperator::Greater;
      test.isNegated = !isNegated;
      break;
    case FilterOperator::Like:
      test.op = TestOperator::Like;
      break;
    case FilterOperator::In:
      test.op = TestOperator::In;
      break;
  }
  return test;
}

class FilterCompiler {
 public:
  FilterCompiler(std::string_view text, const FilterScope& scope, const Comparison* left)
      : query_{"filter", text}, scope_(scope), left_(left) {}

  SqlPiece Compile(const FilterExpression& expression, bool isNegated) {
    if (const auto* comparison = std::get_if<Comparison>(&expression.node)) return CompileOne(*comparison, isNegated);
    if (const auto* negation = std::get_if<FilterNot>(&expression.node)) return Compile(*negation->operand, !isNegated);
    if (const auto* all = std::get_if<FilterAnd>(&expression.node)) return Join(all->children, !isNegated, isNegated);
    return Join(std::get<FilterOr>(expression.node).children, isNegated, isNegated);
  }

 private:
  SqlPiece Join(const std::vector<FilterExpression>& children, bool isAnd, bool isNegated) {
    try {
      nesting_.EnterJunction(children.size());
    } catch (const Error& failure) {
      throw ColumnError(query_, 1, failure.what());
    }
    Junction junction(isAnd);
    for (const auto& child : children) junction.Add(Compile(child, isNegated));
    nesting_.LeaveJunction(children.size());
    return junction.Result();
  }

  SqlPiece CompileOne(const Comparison& comparison, bool isNegated) {
    if (&comparison == left_) return {};
    TestedColumn column;
    try {
      column = scope_.column(comparison.name);
    } catch (const Error& failure) {
      throw ColumnError(query_, comparison.nameColumn, failure.what());
    }
    if (!comparison.ids.empty()) {
      return {fmt::format("{} {}IN (SELECT value FROM json_each(?))", column.expression, isNegated ? "NOT " : ""),
              {JsonList(comparison.ids)}};
    }
    try {
      return CompileTest(column, ToTest(comparison, isNegated));
    } catch (const Error& failure) {
      throw ColumnError(query_, comparison.valueColumn, failure.what());
    }
  }

  QueryText query_;
  const FilterScope& scope_;
  const Comparison* left_;
  Nesting nesting_;
};

class DocumentCompiler {
 public:
  explicit DocumentCompiler(const StoreSchema& schema) : schema_(schema) {}

  SqlPiece Compile(const ConditionNode& condition, const FilterScope& scope, bool isNegated) {
    if (const auto* test = std::get_if<ConditionTest>(&condition.node)) return CompileOne(*test, scope, isNegated);
    if (const auto* all = std::get_if<ConditionAnd>(&condition.node)) {
      const bool negated = all->isNegated != isNegated;
      return Join(all->children, scope, !negated, negated);
    }
    if (const auto* some = std::get_if<ConditionOr>(&condition.node)) {
      const bool negated = some->isNegated != isNegated;
      return Join(some->children, scope, negated, negated);
    }
    return CompileRelated(std::get<ConditionRelated>(condition.node), scope, isNegated);
  }

 private:
  SqlPiece Join(const std::vector<ConditionNode>& children, const FilterScope& scope, bool isAnd, bool isNegated) {
    Enter([&] { nesting_.EnterJunction(children.size()); });
    Junction junction(isAnd);
    for (const auto& child : children) junction.Add(Compile(child, scope, isNegated));
    nesting_.LeaveJunction(children.size());
    return junction.Result();
  }

  template <class EnterLevel>
  static void Enter(const EnterLevel& enter) {
    try {
      enter();
    } catch (const Error& failure) {
      throw Error(fmt::format("search condition: {}", failure.what()));
    }
  }

  static SqlPiece CompileOne(const ConditionTest& condition, const FilterScope& scope, bool isNegated) {
    AttributeTest test;
    test.value = condition.arg;
    test.items = condition.items;
    test.isNegated = condition.isNegated != isNegated;
    switch (condition.op) {
      case ConditionOperator::Equal:
        break;
      case ConditionOperator::Less:
        test.op = TestOperator::Less;
        break;
      case ConditionOperator::Greater:
        test.op = TestOperator::Greater;
        break;
      case ConditionOperator::Like:
        test.op = TestOperator::Like;
        break;
      case ConditionOperator::In:
        test.op = TestOperator::In;
        break;
    }
    try {
      return CompileTest(scope.column(condition.name), test);
    } catch (const Error& failure) {
      throw Error(fmt::format("search condition on \"{}\": {}", condition.name, failure.what()));
    }
  }

  SqlPiece CompileRelated(const ConditionRelated& related, const FilterScope& scope, bool isNegated) {
    if (scope.entity == nullptr) throw Error("search condition: a related object needs a known entity to start from");
    const auto& far = schema_.Entity(related.object->entity);
    const auto directed = schema_.FindRelation(*scope.entity, related.relation, far);
    if (!directed) {
      throw Error(fmt::format("search condition: {} and {} have no relation \"{}\"", scope.entity->Name(), far.Name(),
                              related.relation));
    }
    const std::string link = fmt::format("c{}", ++links_);
    const std::string object = fmt::format("o{}", links_);
    Enter([&] { nesting_.EnterRelated(); });
    SqlPiece inner;
    bool usesTable = false;
    if (related.object->condition) {
      FilterScope innerScope;
      innerScope.entity = &far;
      innerScope.idExpression = fmt::format("{}.\"{}\"", link, directed->FarColumn());
      innerScope.column = [&](std::string_view name) -> TestedColumn {
        if (shell::EqualIgnoringCase(name, "ID")) return {innerScope.idExpression, AttrType::Integer, false};
        const auto& attribute = *far.Attributes()[far.PlaceOf(name)];
        usesTable = true;
        return {object + "." + attribute.Column(), attribute.Type(), true};
      };
      inner = Compile(*related.object->condition, innerScope, false);
    }
    nesting_.LeaveRelated();
    SqlPiece piece;
    piece.text = fmt::format("{} {}IN (SELECT {}.\"{}\" FROM {} {}", scope.idExpression,
                             related.isNegated != isNegated ? "NOT " : "", link, directed->NearColumn(),
                             directed->relation->Table(), link);
    if (usesTable) {
      piece.text += fmt::format(" JOIN {} {} ON {}.\"ObjectID\" = {}.\"{}\"", far.Table(), object, object, link,
                                directed->FarColumn());
    }
    if (!inner.text.empty()) piece.text += " WHERE " + inner.text;
    piece.text += ")";
    piece.parameters = std::move(inner.parameters);
    return piece;
  }

  const StoreSchema& schema_;
  Nesting nesting_;
  int links_ = 0;
};

bool IsIDList(const Comparison& comparison) {
  return comparison.op == FilterOperator::In && !comparison.ids.empty();
}

}  // namespace

SqlPiece CompileFilter(const FilterExpression& filter, std::string_view filterText, const FilterScope& scope,
                       const Comparison* left) {
  return FilterCompiler(filterText, scope, left).Compile(filter, false);
}

const Comparison* DemandedIDList(const FilterExpression& filter) {
  if (const auto* comparison = std::get_if<Comparison>(&filter.node))
    return IsIDList(*comparison) ? comparison : nullptr;
  if (const auto* all = std::get_if<FilterAnd>(&filter.node)) {
    for (const auto& child : all->children) {
      if (const auto* found = DemandedIDList(child)) return found;
    }
  }
  return nullptr;
}

SqlPiece CompileCondition(const StoreSchema& schema, const ConditionNode& condition, const FilterScope& scope) {
  return DocumentCompiler(schema).Compile(condition, scope, false);
}

}  // namespace qmrules::workbench::repository
