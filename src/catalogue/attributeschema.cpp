#include "catalogue/attributeschema.h"

#include <fmt/format.h>

#include <charconv>

#include "platform/error.h"
#include "shell/text.h"

namespace qmrules::catalogue {

using platform::XmlElement;

namespace {

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

bool IsOneOf(char character, std::string_view characters) {
  return characters.find(character) != std::string_view::npos;
}

void TakeSign(std::string_view& text) {
  if (!text.empty() && IsOneOf(text.front(), "+-")) text.remove_prefix(1);
}

std::size_t TakeDigits(std::string_view& text) {
  std::size_t count = 0;
  while (count < text.size() && IsDigit(text[count])) ++count;
  text.remove_prefix(count);
  return count;
}

// The digits before the point, with commas behind the first of them.
std::size_t TakeGroupedDigits(std::string_view& text) {
  std::size_t digits = TakeDigits(text);
  while (digits > 0 && !text.empty() && text.front() == ',') {
    text.remove_prefix(1);
    digits += TakeDigits(text);
  }
  return digits;
}

std::string_view TrimSpaces(std::string_view text) {
  constexpr std::string_view kSpaces = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kSpaces);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

bool IsValidFor(const XmlElement& attribute, std::string_view value) {
  const std::string type = attribute.AttributeOr("type", "");
  if (type == "INTEGER") return IsNumeric(value) && value.find_first_of(",.") == std::string_view::npos;
  if (type == "BOOLEAN") {
    const std::string capitals = shell::ToUpper(value);
    return capitals == "TRUE" || capitals == "FALSE";
  }
  if (type == "CHAR") {
    const auto longest = LongestValue(attribute);
    return !longest || shell::CharacterCount(value) <= *longest;
  }
  return true;
}

}  // namespace

XmlElement AttributeElement(const XmlElement& entityAttrs, std::string_view name) {
  return entityAttrs.selectSingleNode(fmt::format("./entityattr[@name={}]", shell::XPathLiteral(name)));
}

std::vector<std::string> AdmissibleValues(const XmlElement& attribute) {
  std::vector<std::string> values;
  if (!attribute) return values;
  for (auto child = attribute.firstChild(); child; child = child.nextSibling()) {
    if (auto value = child.getAttribute("value")) values.push_back(std::move(*value));
  }
  return values;
}

std::optional<std::size_t> LongestValue(const XmlElement& attribute) {
  const std::string length = attribute.AttributeOr("length", "");
  if (length.empty()) return std::nullopt;
  std::size_t characters = 0;
  const char* const end = length.data() + length.size();
  const auto [stop, error] = std::from_chars(length.data(), end, characters);
  if (error != std::errc() || stop != end) {
    throw platform::Error(
        fmt::format("The schema document gives the attribute {} the length \"{}\", which is not a "
                    "whole number. Correct the attribute's definition.",
                    attribute.AttributeOr("name", ""), length));
  }
  return characters;
}

std::vector<AttributeDefault> DefaultsOfNewRule(const XmlElement& entityAttrs) {
  std::vector<AttributeDefault> defaults;
  for (auto attribute = entityAttrs.firstChild(); attribute; attribute = attribute.nextSibling()) {
    std::string value = attribute.AttributeOr("default", "");
    if (!value.empty()) defaults.push_back({attribute.AttributeOr("name", ""), std::move(value)});
  }
  return defaults;
}

bool IsAttributeValueValid(const platform::XmlDocument& document, std::string_view name, std::string_view value) {
  const auto attribute =
      document.selectSingleNode(fmt::format("//entityattrs/entityattr[@name={}]", shell::XPathLiteral(name)));
  return !attribute || IsValidFor(attribute, value);
}

bool IsNumeric(std::string_view text) {
  text = TrimSpaces(text);
  TakeSign(text);
  std::size_t digits = TakeGroupedDigits(text);
  if (!text.empty() && text.front() == '.') {
    text.remove_prefix(1);
    digits += TakeDigits(text);
  }
  if (digits == 0) return false;
  if (!text.empty() && IsOneOf(text.front(), "eEdD")) {
    text.remove_prefix(1);
    TakeSign(text);
    if (TakeDigits(text) == 0) return false;
  }
  return text.empty();
}

AttributeLists BuildAttributeLists(const XmlElement& entityAttrs) {
  AttributeLists lists;
  for (const char* const name :
       {"RuleName", "Description", "BusinessDescription", "Program", "AssignedTo", "Valid", "Validated"}) {
    lists.shown.Add(name, name);
  }
  for (const char* const name : {"RuleName", "Description", "BusinessDescription", "AssignedTo"}) {
    lists.editable.Add(name, name);
  }
  for (auto attribute = entityAttrs.firstChild(); attribute; attribute = attribute.nextSibling()) {
    if (attribute.AttributeOr("system", "") != "false") continue;
    const std::string name = attribute.AttributeOr("name", "");
    lists.shown.Add(name, name);
    lists.editable.Add(name, name);
  }
  return lists;
}

}  // namespace qmrules::catalogue
