#pragma once

#include <QString>
#include <vector>

namespace qmrules::desktop {

struct FindOptions {
  bool matchCase = false;
  bool wholeWord =
      false;  // letters, digits and the signs in names of legacy languages ("-", "_", "#", "@", "$") make words
};

// Where the pattern stands in the text, each place from 0 and behind the end of the one before. None for an empty
// pattern.
std::vector<int> FindMatches(const QString& text, const QString& pattern, FindOptions options);

}  // namespace qmrules::desktop
