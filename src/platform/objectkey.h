#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qmrules::platform {

// An object key taken apart. A key names one repository object: entity name, "#", decimal ID, as "RULE#17".
struct ObjectKey {
  std::string entity;
  std::int32_t id = 0;
  friend bool operator==(const ObjectKey&, const ObjectKey&) = default;
};

// The entity's name without blanks around it, "#", and the decimal ID.
[[nodiscard]] std::string MakeKey(std::string_view entity, std::int32_t id);

// The inverse of MakeKey. Throws Error, naming the key, for a text without an entity name, without "#", and for one
// whose ID is not a decimal number of 32 bits.
[[nodiscard]] ObjectKey SplitKey(std::string_view key);

}  // namespace qmrules::platform
