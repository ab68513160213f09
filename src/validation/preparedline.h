#pragma once

#include <string>
#include <string_view>

namespace qmrules::validation {

// A line of a file in the form in which lines are compared: through SafeText, without the blanks at its ends. A view of
// `line` or of `buffer`, whose old content goes.
std::string_view PrepareLine(std::string_view line, std::string& buffer);

// With `collapseSpaces` each run of spaces becomes one space; without it the text stays.
void CollapseRuns(std::string& text, bool collapseSpaces);

}  // namespace qmrules::validation
