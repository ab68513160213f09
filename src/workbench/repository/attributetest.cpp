#include "workbench/repository/attributetest.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "platform/error.h"
#include "shell/casefold.h"
#include "shell/likepattern.h"

namespace qmrules::workbench::repository {

using platform::AttrType;
using platform::Error;
using platform::Value;

namespace {

const std::string kAlways = "1 = 1";
const std::string kNever = "1 = 0";

// The text of a value in the form in which the store keeps values of this type.
StoredValue ToColumnForm(AttrType type, const std::string& text) {
  switch (type) {
    case AttrType::Integer:
      return Value(text).Integer();
    case AttrType::Timestamp:
      return platform::FormatTimestamp(Value(text).Time());
    case AttrType::Boolean:
      for (const char* truth : {"true", "false"}) {
        if (shell::EqualIgnoringCase(text, truth)) return std::string(truth);
      }
      return text;
    case AttrType::Char:
    case AttrType::LongText:
      break;
  }
  return text;
}

// True when an unset value and an empty one are different things in the column: only texts have an empty form.
bool HasEmptyForm(const TestedColumn& column) {
  return column.type != AttrType::Integer;
}

SqlPiece IsUnset(const TestedColumn& column) {
  if (!column.isNullable) return {HasEmptyForm(column) ? column.expression + " = ''" : kNever, {}};
  if (!HasEmptyForm(column)) return {column.expression + " IS NULL", {}};
  return {fmt::format("({0} IS NULL OR {0} = '')", column.expression), {}};
}

SqlPiece IsSet(const TestedColumn& column) {
  if (HasEmptyForm(column)) return {column.expression + " <> ''", {}};
  return {column.isNullable ? column.expression + " IS NOT NULL" : kAlways, {}};
}

// A comparison that an unset value does not meet.
SqlPiece SetAnd(const TestedColumn& column, std::string_view sqlOperator, StoredValue value) {
  return {fmt::format("{} {} ?", column.expression, sqlOperator), {std::move(value)}};
}

// A comparison that an unset value meets.
SqlPiece UnsetOr(const TestedColumn& column, std::string_view sqlOperator, StoredValue value) {
  if (!column.isNullable) return SetAnd(column, sqlOperator, std::move(value));
  return {fmt::format("({0} IS NULL OR {0} {1} ?)", column.expression, sqlOperator), {std::move(value)}};
}

SqlPiece CompileEqual(const TestedColumn& column, const AttributeTest& test) {
  if (test.value.empty()) return test.isNegated ? IsSet(column) : IsUnset(column);
  auto value = ToColumnForm(column.type, test.value);
  return test.isNegated ? UnsetOr(column, "<>", std::move(value)) : SetAnd(column, "=", std::move(value));
}

SqlPiece CompileLess(const TestedColumn& column, const AttributeTest& test) {
  if (test.value.empty()) return {test.isNegated ? kAlways : kNever, {}};
  auto value = ToColumnForm(column.type, test.value);
  return test.isNegated ? SetAnd(column, ">=", std::move(value)) : UnsetOr(column, "<", std::move(value));
}

SqlPiece CompileGreater(const TestedColumn& column, const AttributeTest& test) {
  if (test.value.empty()) return test.isNegated ? IsUnset(column) : IsSet(column);
  auto value = ToColumnForm(column.type, test.value);
  return test.isNegated ? UnsetOr(column, "<=", std::move(value)) : SetAnd(column, ">", std::move(value));
}

SqlPiece CompileLike(const TestedColumn& column, const AttributeTest& test) {
  try {
    const shell::LikePattern checked(test.value);
  } catch (const std::invalid_argument& failure) {
    throw Error(failure.what());
  }
  return {fmt::format("{}qmlike(?, {})", test.isNegated ? "NOT " : "", column.expression), {test.value}};
}

SqlPiece CompileIn(const TestedColumn& column, const AttributeTest& test) {
  std::vector<std::int64_t> numbers;
  std::vector<std::string> texts;
  bool hasEmpty = false;
  for (const auto& item : test.items) {
    if (item.empty()) {
      hasEmpty = true;
      continue;
    }
    if (!IsUtf8(item)) throw Error("the text is not UTF-8");
    const auto value = ToColumnForm(column.type, item);
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
      numbers.push_back(*number);
    } else {
      texts.push_back(std::get<std::string>(value));
    }
  }
  const auto list = column.type == AttrType::Integer ? JsonList(numbers) : JsonList(texts);
  SqlPiece piece{
      fmt::format("{} {}IN (SELECT value FROM json_each(?))", column.expression, test.isNegated ? "NOT " : ""), {list}};
  if (hasEmpty) {
    const auto empty = test.isNegated ? IsSet(column) : IsUnset(column);
    piece.text = fmt::format("({} {} {})", piece.text, test.isNegated ? "AND" : "OR", empty.text);
  } else if (test.isNegated && column.isNullable) {
    piece.text = fmt::format("({} IS NULL OR {})", column.expression, piece.text);
  }
  return piece;
}

}  // namespace

std::string JsonList(const std::vector<std::int64_t>& numbers) {
  std::string list = "[";
  for (const auto number : numbers) {
    if (list.size() > 1) list += ',';
    list += std::to_string(number);
  }
  return list + ']';
}

std::string JsonList(const std::vector<std::string>& texts) {
  return nlohmann::json(texts).dump();
}

SqlPiece CompileTest(const TestedColumn& column, const AttributeTest& test) {
  switch (test.op) {
    case TestOperator::Less:
      return CompileLess(column, test);
    case TestOperator::Greater:
      return CompileGreater(column, test);
    case TestOperator::Like:
      return CompileLike(column, test);
    case TestOperator::In:
      return CompileIn(column, test);
    case TestOperator::Equal:
      break;
  }
  return CompileEqual(column, test);
}

}  // namespace qmrules::workbench::repository
