#include "workbench/flow/effects.h"

#include <array>

namespace qmrules::workbench::flow {

std::string_view NameOf(DefinitionKind kind) {
  static constexpr std::array<std::string_view, kDefinitionKinds> kNames = {
      "move", "constant move", "computation", "input", "parameter", "initial value", "call", "unknown"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string_view NameOf(EffectGapKind kind) {
  static constexpr std::array<std::string_view, kEffectGapKinds> kNames = {
      "unknown statement", "unresolved name", "variable subscript", "variable reference",
      "address taken",     "shared storage",  "moving item"};
  return kNames[static_cast<std::size_t>(kind)];
}

}  // namespace qmrules::workbench::flow
