#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "workbench/flow/chainarea.h"
#include "workbench/flow/rangebodies.h"

namespace qmrules::test {

// Which definitions of an area reach which points, for the whole program at once: plain sweeps over every range until
// nothing changes, piece of storage after piece, without leaving anything out. Written from the definition: what
// reaches a point is what was defined since its range was entered, and, where nothing has overwritten it since, what
// reached the calls of the range.
class ReferenceSolver {
 public:
  ReferenceSolver(const workbench::flow::RangeBodies& bodies, const workbench::flow::ChainArea& area);

  // Right before each point that uses the area or leaves the program: by point and definition (its index among the
  // area's effects), the bytes.
  const std::map<std::pair<workbench::flow::PointId, std::uint32_t>, workbench::flow::ByteSet>& Reaching() const {
    return reaching_;
  }
  // The same for the bytes of each use: by use and definition, both indices among the area's effects.
  std::map<std::pair<std::uint32_t, std::uint32_t>, workbench::flow::ByteSet> Links() const;

 private:
  using Bits = std::vector<std::uint64_t>;
  // What is known at one place of one range.
  struct Fact {
    Bits since;           // definitions since the range was entered
    bool passes = false;  // on some way from there to here nothing was overwritten for sure
  };
  struct RangeFacts {
    std::vector<Fact> before;  // by place
    Fact exit;
    Bits atEntry;  // definitions that reach the calls
  };

  void SolvePiece(workbench::flow::ByteInterval piece);
  bool SweepWithin(workbench::flow::RangeId range);
  bool SweepAcross(workbench::flow::RangeId range);
  Fact Behind(workbench::flow::PointId point, Fact fact) const;
  Bits All(const RangeFacts& facts, std::uint32_t place) const;
  void Keep(workbench::flow::ByteInterval piece);

  const workbench::flow::RangeBodies& bodies_;
  const workbench::flow::ChainArea& area_;
  std::vector<std::uint32_t> definitions_;                                            // of the piece
  std::map<workbench::flow::PointId, std::pair<std::vector<std::size_t>, bool>> at_;  // their bits; whether it kills
  std::vector<RangeFacts> facts_;                                                     // by range
  std::map<std::pair<workbench::flow::PointId, std::uint32_t>, workbench::flow::ByteSet> reaching_;
};

}  // namespace qmrules::test
