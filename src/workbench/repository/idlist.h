#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

// Reads a list of object IDs, "0,17,42": numbers of digits only, joined by ",", with blanks allowed around each. Gives
// them in the order of the list, each once, at the place where it stood first. Time and memory grow in step with the
// list: a million IDs are ordinary. Throws Error `ID list "0,x" column 3: a number is expected` for anything else, the
// empty text included.
std::vector<std::int64_t> ParseIDList(std::string_view text);

// The same for a list that is the bytes from `first` up to but not including `last` of a longer text, which is the one
// that the Error names.
std::vector<std::int64_t> ParseIDList(const QueryText& query, std::size_t first, std::size_t last);

}  // namespace qmrules::workbench::repository
