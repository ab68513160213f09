#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "workbench/flow/rangebodies.h"

// The bodies of ranges in a form that a search goes through quickly: straight runs of points are one basic block, and
// the points of a block have consecutive positions.
namespace qmrules::workbench::flow {

class BlockBody {
 public:
  explicit BlockBody(const RangeBody& body);

  std::uint32_t Blocks() const { return static_cast<std::uint32_t>(starts_.size() - 1); }
  // Positions count in the order in which control passes the points of a block.
  std::uint32_t PositionOf(std::uint32_t place) const { return positions_[place]; }
  std::uint32_t BlockAt(std::uint32_t position) const { return blocks_[position]; }
  std::uint32_t Begin(std::uint32_t block) const { return starts_[block]; }
  std::uint32_t End(std::uint32_t block) const { return starts_[block + 1]; }  // exclusive
  std::span<const std::uint32_t> Before(std::uint32_t block) const { return Part(befores_, beforeStarts_, block); }
  std::span<const std::uint32_t> After(std::uint32_t block) const { return Part(afters_, afterStarts_, block); }
  // The block that the range's entry begins, and the one that its exit ends; kNone when the range never returns.
  std::uint32_t EntryBlock() const { return 0; }
  std::uint32_t ExitBlock() const { return exitBlock_; }
  std::size_t Bytes() const;

  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

 private:
  static std::span<const std::uint32_t> Part(const std::vector<std::uint32_t>& all,
                                             const std::vector<std::uint32_t>& starts, std::uint32_t block) {
    return std::span(all).subspan(starts[block], starts[block + 1] - starts[block]);
  }
  void LayOut(const RangeBody& body);
  void Join(const RangeBody& body);

  std::vector<std::uint32_t> positions_;  // by place
  std::vector<std::uint32_t> order_;      // places by position
  std::vector<std::uint32_t> blocks_;     // by position
  std::vector<std::uint32_t> starts_;     // by block
  std::vector<std::uint32_t> beforeStarts_, befores_, afterStarts_, afters_;
  std::uint32_t exitBlock_ = kNone;
};

// Those of the ranges that were asked for, which are kept.
class BlockBodies {
 public:
  explicit BlockBodies(const RangeBodies& bodies) : bodies_(bodies), made_(bodies.Flow().Ranges().size()) {}

  const RangeBodies& Bodies() const { return bodies_; }
  const BlockBody& Of(RangeId range) {
    if (!made_[range]) made_[range] = std::make_unique<BlockBody>(bodies_.Of(range));
    return *made_[range];
  }
  std::size_t Bytes() const;

 private:
  const RangeBodies& bodies_;
  std::vector<std::unique_ptr<BlockBody>> made_;  // by range
};

}  // namespace qmrules::workbench::flow
