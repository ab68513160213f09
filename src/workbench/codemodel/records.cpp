#include "workbench/codemodel/records.h"

#include <array>

namespace qmrules::workbench::codemodel {

std::string_view NameOf(DataUsage usage) {
  constexpr std::array<std::string_view, kDataUsages> names = {
      "GROUP",    "DISPLAY",   "BINARY",           "COMP-5",    "COMP-3",  "COMP-6",
      "COMP-1",   "COMP-2",    "COMP-X",           "INDEX",     "POINTER", "PROCEDURE-POINTER",
      "NATIONAL", "DISPLAY-1", "OBJECT REFERENCE", "CONDITION", "RENAMES",
  };
  static_assert(!names.back().empty());
  return names[static_cast<std::size_t>(usage)];
}

std::string_view NameOf(DataSectionKind section) {
  constexpr std::array<std::string_view, kDataSections> names = {
      "FILE", "WORKING-STORAGE", "LOCAL-STORAGE", "LINKAGE", "SCREEN", "REPORT", "COMMUNICATION",
  };
  static_assert(!names.back().empty());
  return names[static_cast<std::size_t>(section)];
}

}  // namespace qmrules::workbench::codemodel
