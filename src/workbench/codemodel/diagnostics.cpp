#include "workbench/codemodel/diagnostics.h"

#include <fmt/format.h>

#include <utility>

namespace qmrules::workbench::codemodel {

void Diagnostics::Add(Diagnostic diagnostic) {
  if (counts_[static_cast<std::size_t>(diagnostic.severity)]++ < kMost) diagnostics_.push_back(std::move(diagnostic));
}

std::vector<Diagnostic> Diagnostics::Take() {
  for (const Severity severity : {Severity::Gap, Severity::Warning, Severity::Note}) {
    const std::size_t count = Count(severity);
    if (count <= kMost || diagnostics_.empty()) continue;
    const std::string file = diagnostics_.front().file;
    diagnostics_.push_back({severity, file, 0, 0,
                            fmt::format("{} more of this kind ({}) are not listed.", count - kMost, NameOf(severity))});
  }
  return std::exchange(diagnostics_, {});
}

std::string_view NameOf(Severity severity) {
  switch (severity) {
    case Severity::Gap:
      return "gap";
    case Severity::Warning:
      return "warning";
    case Severity::Note:
      break;
  }
  return "note";
}

}  // namespace qmrules::workbench::codemodel
