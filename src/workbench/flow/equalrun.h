#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <vector>

namespace qmrules::workbench::flow {

// The elements whose projection is the value, of a vector that is in the order of the projections. What
// std::ranges::equal_range gives cannot be walked with clang 14 and the library of GCC 12.
template <typename Element, typename Value, typename Projection = std::identity>
std::span<const Element> EqualRun(const std::vector<Element>& sorted, const Value& value, Projection projection = {}) {
  const auto first = std::ranges::lower_bound(sorted, value, {}, projection);
  const auto last = std::ranges::upper_bound(first, sorted.end(), value, {}, projection);
  return {first, last};
}

}  // namespace qmrules::workbench::flow
