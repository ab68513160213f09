#include "bars.h"

#include <fmt/format.h>

namespace qmrules::bench {

void Bars::Print() const {
  for (const auto& bar : bars_) fmt::print("bar {} {:.3f} {}\n", bar.name, bar.value, bar.limit);
}

}  // namespace qmrules::bench
