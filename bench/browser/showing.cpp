#include "browser/showing.h"

#include <fmt/format.h>

#include <stdexcept>

#include "browser/barefetches.h"

namespace qmrules::bench {

void MeasureShowing(Control& control, platform::Repository& repository, const Catalogue& catalogue, TimeTable& table) {
  const std::uint64_t valid = FetchValidRules(repository);
  table.Measure(
      {.name = "show", .aimSeconds = 1.5, .ratioLimit = 2.5, .rounds = 7},
      [&](int) { return TimeOf([&] { control.Show(); }); },
      [&](int) { return FetchTree(repository, catalogue.projectKey) + FetchValidRules(repository); });

  // Each rule set has one placeholder.
  const auto nodes = static_cast<std::size_t>(catalogue.functions + 2 * catalogue.Sets());
  if (control.Tree().Count() != nodes) {
    throw std::runtime_error(fmt::format("show: the tree has {} nodes in place of {}.", control.Tree().Count(), nodes));
  }
  if (FetchValidRules(repository) != valid) throw std::runtime_error("show: the sweep has demoted rules.");
}

}  // namespace qmrules::bench
