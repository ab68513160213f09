#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace qmrules::validation {

// How the text of a segment compares with the rows that it is stored for.
struct SourceCheck {
  bool stands = false;   // the rows hold exactly this text; a last line feed may be missing from it
  bool pastEnd = false;  // the first row lies behind the end of the file
};

// `lines`: the file's lines. Rows count from 1; the rows behind the end of the file hold nothing. Each line is compared
// as SafeText leaves it, with a line feed behind it.
[[nodiscard]] SourceCheck CheckSource(const std::vector<std::string_view>& lines, std::int32_t fromRow,
                                      std::int32_t toRow, std::string_view sourceText);

}  // namespace qmrules::validation
