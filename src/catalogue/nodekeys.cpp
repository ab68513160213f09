#include "catalogue/nodekeys.h"

#include <fmt/format.h>

#include <charconv>

#include "catalogue/gateway.h"
#include "platform/error.h"

namespace qmrules::catalogue {

namespace {

// Where the digits of the ID begin; npos when the key has no such place.
std::size_t PlaceOfID(std::string_view image, std::string_view key) {
  if (image == kBusinessFunction) return 1;
  const std::size_t letter = image == kRuleSet ? key.find('s')
                             : image == kRule  ? key.find('r')
                                               : std::string_view::npos;
  return letter == std::string_view::npos ? letter : letter + 1;
}

}  // namespace

std::string FunctionNodeKey(std::int32_t functionID) {
  return fmt::format("f{}", functionID);
}

std::string RuleSetNodeKey(std::int32_t functionID, std::int32_t setID) {
  return fmt::format("f{}s{}", functionID, setID);
}

std::string RuleNodeKey(std::int32_t functionID, std::int32_t ruleID) {
  return fmt::format("f{}r{}", functionID, ruleID);
}

std::string RuleSetRowKey(std::int32_t setID) {
  return fmt::format("s{}", setID);
}

std::string RuleRowKey(std::int32_t ruleID) {
  return fmt::format("r{}", ruleID);
}

std::string ElementRowKey(std::int32_t id) {
  return fmt::format("k{}", id);
}

std::string RuleSetOccurrences(std::int32_t setID) {
  return fmt::format("f*s{}", setID);
}

std::string RuleOccurrences(std::int32_t ruleID) {
  return fmt::format("f*r{}", ruleID);
}

std::int32_t NodeKeyID(std::string_view image, std::string_view key) {
  const std::size_t place = PlaceOfID(image, key);
  std::int32_t id = -1;
  if (place < key.size()) {
    const char* const end = key.data() + key.size();
    const auto [stop, error] = std::from_chars(key.data() + place, end, id);
    if (error == std::errc() && stop == end && id >= 0) return id;
  }
  throw platform::Error(fmt::format("The node key \"{}\" with the image \"{}\" holds no ID.", key, image));
}

}  // namespace qmrules::catalogue
