#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace qmrules::workbench::flow {

// The strongly connected groups of the things that can be reached from thing 0: those of one group can all reach each
// other. Groups are numbered in an order in which each comes behind those that it leads to.
struct CycleGroups {
  static constexpr std::uint32_t kNotReached = ~std::uint32_t{0};

  std::vector<std::uint32_t> groupOf;    // by thing
  std::vector<std::uint32_t> order;      // things, by group
  std::vector<std::uint32_t> starts{0};  // by group, into `order`, and its end

  std::size_t Count() const { return starts.size() - 1; }
  std::uint32_t SizeOf(std::uint32_t group) const { return starts[group + 1] - starts[group]; }
};

// `next(thing, n)` is the nth thing that a thing leads to, of `count(thing)`. Tarjan's way, with a stack of its own.
template <typename Count, typename Next>
CycleGroups FindCycleGroups(std::size_t things, const Count& count, const Next& next) {
  struct Step {
    std::uint32_t thing;
    std::size_t way;
  };
  CycleGroups groups;
  groups.groupOf.assign(things, CycleGroups::kNotReached);
  std::vector<std::uint32_t> number(things, CycleGroups::kNotReached);
  std::vector<std::uint32_t> lowest(things, 0);
  std::vector<std::uint32_t> open;
  std::vector<Step> steps;
  std::uint32_t met = 0;
  const auto enter = [&](std::uint32_t thing) {
    number[thing] = lowest[thing] = met++;
    open.push_back(thing);
    steps.push_back({thing, 0});
  };
  const auto close = [&](std::uint32_t thing) {
    for (std::uint32_t member = CycleGroups::kNotReached; member != thing;) {
      member = open.back();
      open.pop_back();
      groups.groupOf[member] = static_cast<std::uint32_t>(groups.Count());
      groups.order.push_back(member);
    }
    groups.starts.push_back(static_cast<std::uint32_t>(groups.order.size()));
  };
  enter(0);
  while (!steps.empty()) {
    const std::uint32_t thing = steps.back().thing;
    if (steps.back().way < count(thing)) {
      const std::uint32_t to = next(thing, steps.back().way++);
      if (number[to] == CycleGroups::kNotReached) {
        enter(to);
      } else if (groups.groupOf[to] == CycleGroups::kNotReached) {
        lowest[thing] = std::min(lowest[thing], number[to]);
      }
      continue;
    }
    steps.pop_back();
    if (!steps.empty()) lowest[steps.back().thing] = std::min(lowest[steps.back().thing], lowest[thing]);
    if (lowest[thing] == number[thing]) close(thing);
  }
  return groups;
}

}  // namespace qmrules::workbench::flow
