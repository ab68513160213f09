#include "workbench/flow/programbinding.h"

#include <algorithm>

namespace qmrules::workbench::flow {

namespace {

// What of the bytes lies in the place, moved to where the other place begins and cut where that ends.
ByteSet Moved(const ByteSet& bytes, const StoragePlace& from, const StoragePlace& to) {
  if (!from.IsExact() || !to.IsExact()) return bytes.Overlaps(from.Bytes()) ? to.Bytes() : ByteSet();
  ByteSet moved;
  for (const ByteInterval& interval : bytes.Intervals()) {
    const std::uint64_t begin = std::max(interval.begin, from.first.begin) - from.first.begin + to.first.begin;
    const std::uint64_t last = std::min(interval.end, from.first.end);
    if (last <= from.first.begin) continue;
    const std::uint64_t end = std::min(last - from.first.begin + to.first.begin, to.first.end);
    if (begin < end) moved.Add({begin, end});
  }
  return moved;
}

}  // namespace

ByteSet ProgramBinding::Inwards(const ByteSet& bytes) const {
  return Moved(bytes, argument.place, parameter.place);
}

ByteSet ProgramBinding::Outwards(const ByteSet& bytes) const {
  return Moved(bytes, parameter.place, argument.place);
}

std::optional<ProgramBinding> BindArgument(const ProgramCall& call, const std::vector<Argument>& parameters,
                                           NodeId operand) {
  for (std::size_t position = 0; position < std::min(call.arguments.size(), parameters.size()); ++position) {
    const Argument& argument = call.arguments[position];
    if (argument.operand != operand || argument.place.area == 0) continue;
    return ProgramBinding{argument, parameters[position]};
  }
  return std::nullopt;
}

}  // namespace qmrules::workbench::flow
