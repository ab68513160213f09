#pragma once

#include <string>
#include <variant>
#include <vector>

namespace qmrules::desktop {

// One text of a list; a text that does not count is kept, but has no effect.
struct ListedText {
  std::string text;
  bool counts = true;
  friend bool operator==(const ListedText&, const ListedText&) = default;
};

// What an option holds: a text (also the name of a choice), a switch, or a list of texts.
using OptionValue = std::variant<std::string, bool, std::vector<ListedText>>;

}  // namespace qmrules::desktop
