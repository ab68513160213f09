#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "workbench/codemodel/sourcefile.h"

namespace qmrules::workbench::codemodel::cobol {

enum class SourceFormat : std::uint8_t {
  Fixed,      // sequence area 1–6, indicator 7, text 8–72
  WideFixed,  // the same, with text from 8 to the end of the line
  Free,
};

std::string_view NameOf(SourceFormat format);                          // "fixed", "wide", "free"
std::optional<SourceFormat> SourceFormatNamed(std::string_view name);  // in any case

// The form of a COBOL text. A directive (">>SOURCE FORMAT IS FREE", "$SET SOURCEFORMAT"FIXED"") before its first line
// of code decides. Without one, the lines up to the first such directive are looked at: they are free when more than
// one in fifty cannot be of fixed form (column 7 holds no indicator), and wide fixed when they are not free and text of
// statements goes on past column 72, as opposed to marks in the identification area.
SourceFormat DetectFormat(std::string_view text);
SourceFormat DetectFormat(const SourceFile& file);

// What a directive makes the form of the lines behind it; nothing for one that does not tell.
std::optional<SourceFormat> FormatOfDirective(std::string_view directive);

}  // namespace qmrules::workbench::codemodel::cobol
