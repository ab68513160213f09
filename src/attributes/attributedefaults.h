#pragma once

#include "platform/database.h"
#include "platform/xml.h"

namespace qmrules::attributes {

// Brings the rules in line with the schema document: for each attribute of the rules that lists its values (children
// `const`), every rule whose value is not on the list gets the attribute's `default`, in one statement on the table
// VekRULETbl. Attributes without a list cost nothing. Throws Error, before any write, for an attribute whose name could
// not be a column, and when the database refuses a statement.
void ApplyAttributeDefaults(platform::Database& database, const platform::XmlDocument& document);

}  // namespace qmrules::attributes
