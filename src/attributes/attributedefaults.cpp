#include "attributes/attributedefaults.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/attributeschema.h"
#include "platform/error.h"
#include "shell/text.h"

namespace qmrules::attributes {

namespace {

std::string SqlText(std::string_view text) {
  std::string doubled;
  for (const char character : text) {
    if (character == '\'') doubled += '\'';
    doubled += character;
  }
  return fmt::format("'{}'", shell::SafeText(doubled));
}

bool CanBeColumn(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') || character == '_';
  });
}

// "" for an attribute without a list of values.
std::string RepairStatement(const platform::XmlElement& attribute) {
  std::string list;
  for (const auto& value : attribute.selectNodes("./const")) {
    if (!list.empty()) list += ',';
    list += SqlText(value.AttributeOr("value", ""));
  }
  if (list.empty()) return {};
  const std::string name = attribute.AttributeOr("name", "");
  if (!CanBeColumn(name)) {
    throw platform::Error(
        fmt::format("The schema document has a rule attribute named \"{}\". A name has letters and "
                    "digits only. Correct the attribute's name.",
                    name));
  }
  return fmt::format("update VekRULETbl set {0}={1} where {0} not in ({2})", name,
                     SqlText(attribute.AttributeOr("default", "")), list);
}

}  // namespace

void ApplyAttributeDefaults(platform::Database& database, const platform::XmlDocument& document) {
  std::vector<std::string> statements;
  for (const auto& attribute : document.selectNodes(std::string(catalogue::kRuleAttributesPath) + "/entityattr")) {
    std::string statement = RepairStatement(attribute);
    if (!statement.empty()) statements.push_back(std::move(statement));
  }
  for (const std::string& statement : statements) database.Execute(statement);
}

}  // namespace qmrules::attributes
