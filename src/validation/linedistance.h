#pragma once

#include <cstdint>
#include <string_view>

namespace qmrules::validation {

// The Levenshtein distance of two lines in characters (UTF-16 code units): the least number of characters to insert,
// delete or substitute. Case counts. Takes time in the product of the lengths and memory in the shorter one.
std::int32_t LineEditDistance(std::string_view a, std::string_view b);

// The same where it is at most `limit`, else `limit` + 1. `limit` from 0. Takes time in the length times `limit`.
std::int32_t LineEditDistanceUpTo(std::string_view a, std::string_view b, std::int32_t limit);

}  // namespace qmrules::validation
