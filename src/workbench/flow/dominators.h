#pragma once

#include <cstdint>
#include <vector>

#include "workbench/flow/rangebodies.h"

namespace qmrules::workbench::flow {

// For each place of a body the nearest other one that every path from the range's entry to it goes through: its
// immediate dominator. The entry, which has none, has itself. It always has a lower place.
//
// Found as Lengauer and Tarjan do, with their simple way to link: O(n log n), whatever the body looks like.
std::vector<std::uint32_t> ImmediateDominators(const RangeBody& body);

}  // namespace qmrules::workbench::flow
