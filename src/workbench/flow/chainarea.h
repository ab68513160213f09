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
  // Many effects are about the same bytes: those on an item, or on a field of a table by variable subscripts. Each such
  // set of bytes has a number, from 0 in the order of the effects.
  const ByteSet& SetOfBytes(std::uint32_t set) const { return effects_[EffectsOn(set).front()].bytes; }
  // Indices of its effects, ascending.
  std::span<const std::uint32_t> EffectsOn(std::uint32_t set) const {
    return std::span(bySet_).subspan(setStarts_[set], setStarts_[set + 1] - setStarts_[set]);
  }
  // The sets that have some of the bytes, ascending. Costs no more than the sets that lie between the first and the
  // last of the bytes, and the logarithm of all.
  std::vector<std::uint32_t> SetsWith(const ByteSet& bytes) const;
  // Indices of the effects with the operand, ascending.
  std::vector<std::uint32_t> OfOperand(NodeId operand) const;
  // Of the point, in the order of the language.
  std::span<const AreaGap> GapsAt(PointId point) const;
  std::size_t Bytes() const;

 private:
  void FindSets();
  void MakeTree(std::size_t first, std::size_t last);
  void Collect(std::size_t first, std::size_t last, const ByteSet& bytes, ByteInterval around,
               std::vector<std::uint32_t>& found) const;
  std::uint64_t FarthestEnd(std::size_t first, std::size_t last) const;

  std::vector<AreaEffect> effects_;
  std::vector<AreaGap> gaps_;             // ascending by point
  std::vector<std::uint32_t> byOperand_;  // effects
  std::vector<std::uint32_t> setStarts_;  // by set, into bySet_, and its end
  std::vector<std::uint32_t> bySet_;      // effects
  // An interval tree without pointers: sets by their first byte, each the root of the stretch that it halves, with the
  // farthest end within that stretch.
  std::vector<std::uint32_t> byBegin_;
  std::vector<std::uint64_t> farthest_;
};

}  // namespace qmrules::workbench::flow
