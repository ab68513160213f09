#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "workbench/flow/chainblocks.h"

// Where bytes of storage come from or go to, over the ranges of one program, with returns matched to their calls.
//
// The bytes of a question are parted into pieces, none of which an effect cuts, and each piece is one bit; the pieces
// do not depend on each other. A search carries bits from a point backward (or forward) until each is stopped
// everywhere. It goes through a range in one of two ways:
//
//   outward   the point that it started at runs in this range or in one that it performs. At the range's entry (exit)
//             it goes on before (behind) every call of the range.
//   inward    it came in by a call that returns before (after) the point, so at the other end it goes on at the calls
//             that it came in by, and nowhere else. It is enough to know which bits get through the range, since the
//             way through a range is the same whoever calls it: these bits are its summary.
//
// Only points with an effect on the bytes, and calls of ranges that have one or perform one that has, are looked at;
// whatever is between them costs a step for each block, and a call of any other range costs nothing.
namespace qmrules::workbench::flow {

// Up to 64 pieces of the bytes asked about.
using Pieces = std::uint64_t;

// A point at which something happens to the pieces.
struct Touch {
  PointId point = kNoPoint;
  Pieces wanted = 0;   // what the search is out for there
  Pieces stopped = 0;  // what it does not carry further
};

class ChainSearch {
 public:
  enum class Direction : std::uint8_t { Backward, Forward };

  // The touches are ascending by point, each point once.
  ChainSearch(BlockBodies& bodies, Direction direction, std::span<const Touch> touches);

  // Begins right before the point (or behind it), wherever it runs.
  void Start(PointId point, Pieces pieces);
  void Run();
  // What of the pieces has come to the touch, by its index.
  Pieces FoundAt(std::size_t touch) const { return found_[touch]; }

 private:
  enum Mode : std::uint8_t { Outward, Inward };
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};
  // A place in a body at which the search has something to do: a touch, or a call of a range that has markers itself.
  struct Marker {
    std::uint32_t position = 0;  // of a call its place, until the search comes to the range
    std::uint32_t touch = kNone;
    RangeId called = kNoRange;
    Pieces waiting[2] = {};  // by mode: what has come to the call
  };
  struct Waiter {
    RangeId caller = kNoRange;
    std::uint32_t marker = 0;
    Mode mode = Outward;
  };
  struct RangeState {
    const BlockBody* blocks = nullptr;  // once the search has come to the range
    std::vector<Marker> markers;        // ascending by then
    std::vector<Pieces> reached[2];     // by mode and block: what has come to its end at which the search comes in
    Pieces left = 0;                    // outward, through the end at which it goes out
    Pieces passed = 0;                  // the same, inward
    std::vector<Waiter> waiters;        // for more to pass
  };
  // Goes on in a block from a marker's place on: backward, with the markers before that one.
  struct Step {
    RangeId range = kNoRange;
    Mode mode = Outward;
    std::uint32_t block = 0;
    std::uint32_t marker = 0;
    Pieces pieces = 0;
  };

  bool IsBackward() const { return direction_ == Direction::Backward; }
  void MarkTouches(std::span<const Touch> touches);
  RangeState& StateOf(RangeId range);
  RangeState& Open(RangeId range);
  // The marker to begin with for a search that starts at the position, which is itself left out.
  std::uint32_t MarkerBeyond(const RangeState& state, std::uint32_t position) const;
  void StartAt(RangeId range, std::uint32_t place, Pieces pieces);
  void Reach(RangeId range, Mode mode, std::uint32_t block, Pieces pieces);
  void Pass(const Step& step);
  Pieces PassMarker(const Step& step, std::uint32_t index, Pieces pieces);
  Pieces PassCall(const Step& step, std::uint32_t index, Pieces pieces);
  void Leave(RangeId range, Mode mode, Pieces pieces);

  BlockBodies& bodies_;
  Direction direction_;
  std::span<const Touch> touches_;
  std::vector<Pieces> found_;
  std::vector<std::uint32_t> stateOf_;  // by range, into states_
  std::deque<RangeState> states_;
  std::vector<Step> steps_;
};

}  // namespace qmrules::workbench::flow
