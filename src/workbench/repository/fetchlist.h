#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench::repository {

enum class Sort { None, Ascending, Descending };

// One attribute that an entity node delivers.
struct FetchItem {
  std::string name;
  std::string alias;  // the name under which the value is delivered; `name` when the item has none of its own
  Sort sort = Sort::None;
  std::size_t column = 0;  // where the item begins in the list, in characters from 1

  friend bool operator==(const FetchItem&, const FetchItem&) = default;
};

// Reads a fetch list: items joined by ",", each `name` or `name:alias`, with ">" before it to sort upwards and "<" to
// sort downwards. The empty text has no items. Throws Error, naming list and column, for anything else: an empty item,
// a blank, an empty alias, a second sort mark, a ":" too many.
std::vector<FetchItem> ParseFetchList(std::string_view text);

}  // namespace qmrules::workbench::repository
