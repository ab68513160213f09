#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/value.h"
#include "workbench/repository/connection.h"
#include "workbench/repository/storeschema.h"

namespace qmrules::workbench::repository {

// A value in the form in which the store keeps it: unset, an integer, or a text. A boolean is "true" or "false", a
// moment its FormatTimestamp.
using StoredValue = std::variant<std::monostate, std::int64_t, std::string>;

// True when the text is well-formed, as every stored text is.
bool IsUtf8(std::string_view text);

// The value in the attribute's form. An absent value is unset, and so is an empty text where the type is no text.
// Throws platform::Error, naming the attribute, for a value that its type does not take and for a text that is not
// UTF-8.
StoredValue ToStored(const StoreAttribute& attribute, const platform::Value& value);

// What a stored value means as one of the attribute's type. A stored text that the type cannot hold (left from another
// type of the attribute) comes as the text that it is.
platform::Value FromStored(platform::AttrType type, const StoredValue& stored);

// The column of the statement's current row.
StoredValue ReadStored(const Statement& statement, int column);

void Bind(Statement& statement, int parameter, const StoredValue& value);
// For a value that stays where it is until the statement is reset.
void BindInPlace(Statement& statement, int parameter, const StoredValue& value);

}  // namespace qmrules::workbench::repository
