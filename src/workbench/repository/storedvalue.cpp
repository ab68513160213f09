#include "workbench/repository/storedvalue.h"

#include <fmt/format.h>

#include "platform/error.h"
#include "shell/utf8.h"

namespace qmrules::workbench::repository {

using platform::AttrType;
using platform::Error;
using platform::Value;

namespace {

bool IsText(AttrType type) {
  return type == AttrType::Char || type == AttrType::LongText;
}

bool IsEmptyText(const Value& value) {
  const auto* text = std::get_if<std::string>(&value.Get());
  return text != nullptr && text->empty();
}

StoredValue Convert(const StoreAttribute& attribute, const Value& value) {
  switch (attribute.Type()) {
    case AttrType::Integer:
      return value.Integer();
    case AttrType::Boolean:
      return std::string(value.Boolean() ? "true" : "false");
    case AttrType::Timestamp:
      return platform::FormatTimestamp(value.Time());
    case AttrType::Char:
    case AttrType::LongText:
      break;
  }
  std::string text = value.Text();
  if (!IsUtf8(text)) throw Error("the text is not UTF-8.");
  return text;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    if (static_cast<unsigned char>(text[position]) < 0x80) {
      ++position;
      continue;
    }
    const auto step = shell::DecodeAt(text, position);
    if (step.value >= shell::kMalformedByte) return false;
    position += step.length;
  }
  return true;
}

StoredValue ToStored(const StoreAttribute& attribute, const Value& value) {
  if (value.IsAbsent()) return {};
  if (!IsText(attribute.Type()) && IsEmptyText(value)) return {};
  try {
    return Convert(attribute, value);
  } catch (const Error& failure) {
    throw Error(fmt::format("{} ({}): {}", attribute.Name(), platform::AttrTypeName(attribute.Type()), failure.what()));
  }
}

Value FromStored(AttrType type, const StoredValue& stored) {
  if (std::holds_alternative<std::monostate>(stored)) return {};
  if (const auto* number = std::get_if<std::int64_t>(&stored)) {
    return IsText(type) ? Value(std::to_string(*number)) : Value(*number);
  }
  const auto& text = std::get<std::string>(stored);
  if (type == AttrType::Boolean && (text == "true" || text == "false")) return text == "true";
  if (type == AttrType::Timestamp) {
    if (const auto time = platform::ParseTimestamp(text)) return *time;
  }
  return text;
}

StoredValue ReadStored(const Statement& statement, int column) {
  if (statement.IsNull(column)) return {};
  if (statement.IsInteger(column)) return statement.Integer(column);
  return std::string(statement.Text(column));
}

void BindInPlace(Statement& statement, int parameter, const StoredValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    statement.BindTextInPlace(parameter, *text);
  } else {
    Bind(statement, parameter, value);
  }
}

void Bind(Statement& statement, int parameter, const StoredValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) {
    statement.BindInteger(parameter, *number);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    statement.BindText(parameter, *text);
  } else {
    statement.BindNull(parameter);
  }
}

}  // namespace qmrules::workbench::repository
