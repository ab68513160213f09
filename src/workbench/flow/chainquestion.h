#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "workbench/flow/chainarea.h"
#include "workbench/flow/chainblocks.h"

// A question about bytes of one area.
namespace qmrules::workbench::flow {

// An effect that the answer names, with those bytes for which it is true.
struct ReachedEffect {
  std::uint32_t effect = 0;  // in ChainArea::Effects
  ByteSet bytes;
};

struct QuestionStart {
  PointId point = kNoPoint;
  ByteSet bytes;
};

struct QuestionAnswer {
  std::vector<ReachedEffect> effects;  // ascending
  std::vector<ReachedEffect> watched;  // what has come to the watched points: their index, ascending
};

// The definitions that the bytes can have right before one of the points, wherever it runs. `watched` are points, that
// the answer tells of when the search comes to them; ascending.
QuestionAnswer DefinitionsBefore(BlockBodies& bodies, const ChainArea& area, std::span<const QuestionStart> starts,
                                 std::span<const PointId> watched = {});
// The uses that can find what the bytes hold right behind one of the points.
QuestionAnswer UsesBehind(BlockBodies& bodies, const ChainArea& area, std::span<const QuestionStart> starts,
                          std::span<const PointId> watched = {});

}  // namespace qmrules::workbench::flow
