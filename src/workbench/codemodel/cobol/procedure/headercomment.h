#pragma once

#include <cstdint>
#include <string>

#include "workbench/codemodel/expandedtext.h"

namespace qmrules::workbench::codemodel::cobol {

// The comment lines right above the token's row, as CommentText gives them. Empty when there are none.
std::string CommentAbove(const ExpandedText& text, std::uint32_t token);

}  // namespace qmrules::workbench::codemodel::cobol
