#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "shell/messages.h"

namespace qmrules::validation {

// What one run counted.
struct ValidationCounts {
  std::int32_t rules = 0;         // handed in
  std::int32_t correct = 0;       // the text stands at its rows, or there is no segment
  std::int32_t noSegment = 0;     // the rule has no text
  std::int32_t validated = 0;     // the segment was moved
  std::int32_t notValidated = 0;  // it was looked for and not found, or the file cannot be read
};

// What the user is told: lines parted by CR LF. The text begins with an empty line when no rule was correct.
[[nodiscard]] std::string ValidationMessage(const ValidationCounts& counts, std::string_view action,
                                            const shell::StringTable& texts);

}  // namespace qmrules::validation
