#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "workbench/codemodel/expandedtext.h"

namespace qmrules::workbench::codemodel::cobol {

// Comment lines as one text, a line each, without the marks of comments and without frames drawn of * - = / + | #.
// Lines that hold nothing else are left out.
std::string CommentText(const SourceFile& file, std::span<const std::uint32_t> rows);

// The comment lines between two tokens of one file; at most the first 200.
std::string CommentsBetween(const ExpandedText& text, std::uint32_t firstToken, std::uint32_t behindToken);

}  // namespace qmrules::workbench::codemodel::cobol
