#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "workbench/flow/effects.h"
#include "workbench/flow/flowgraph.h"

// All that one unit does with one area of storage.
namespace qmrules::workbench::flow {

// An effect on the area, with the bytes that it may be about.
struct AreaEffect {
  PointId point = kNoPoint;
  Effect effect;
  ByteSet bytes;

  bool IsUse() const { return effect.kind == EffectKind::Use; }
  // What the bytes held before is gone for sure.
  bool Kills() const { return effect.kind == EffectKind::Define && !effect.partial && effect.place.IsExact(); }
};

// A gap at a point that touches the area.
struct AreaGap {
  PointId point = kNoPoint;
  EffectGap gap;
};

class ChainArea {
 public:
  ChainArea() = default;
  // In any order; those without bytes are left out.
  ChainArea(std::vector<AreaEffect> effects, std::vector<AreaGap> gaps);

  // Ascending by point, those of one point in the order of the language.
  std::span<const AreaEffect> Effects() const { return effects_; }
  // Indices of the effects on some of the bytes, ascending. Costs no more than the answer, and the logarithm of all.
  std::vector<std::uint32_t> Touching(const ByteSet& bytes) const;
  // Indices of the effects with the operand, ascending.
  std::vector<std::uint32_t> OfOperand(NodeId operand) const;
  // Of the point, in the order of the language.
  std::span<const AreaGap> GapsAt(PointId point) const;
  std::size_t Bytes() const;

 private:
  void MakeTree(std::size_t first, std::size_t last);
  void Collect(std::size_t first, std::size_t last, ByteInterval interval, std::vector<std::uint32_t>& found) const;
  std::uint64_t FarthestEnd(std::size_t first, std::size_t last) const;

  std::vector<AreaEffect> effects_;
  std::vector<AreaGap> gaps_;             // ascending by point
  std::vector<std::uint32_t> byOperand_;  // effects
  // An interval tree without pointers: effects by their first byte, each the root of the stretch that it halves, with
  // the farthest end within that stretch.
  std::vector<std::uint32_t> byBegin_;
  std::vector<std::uint64_t> farthest_;
};

}  // namespace qmrules::workbench::flow
