#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/codemodel/records.h"

// Which way a program can go, statement by statement.
//
// A program unit becomes a control flow graph, whose nodes are called points. PERFORM does not copy what it performs: a
// Call point names a range, from the start of one label to the end of the same or another one, and goes on at its only
// way out once the range returns. Control that comes to the end of a label returns when the innermost range that is
// being performed ends there, and falls through to the next label otherwise. So what a point can come from depends on
// the range it runs in: RangeBodies follows that, and no path enters by one PERFORM and leaves to another.
//
//   MAIN.                     Entry, Start MAIN
//       PERFORM A THRU B      Statement, Call (range A..B)
//       IF X > 1              Statement, Condition, from there Holds (true) and Holds (false)
//           GO TO Z.          Statement, its only way is a Jump to Start Z
//       …                     End MAIN, Start of the next label
namespace qmrules::workbench::flow {

using codemodel::NodeId;

using PointId = std::uint32_t;
inline constexpr PointId kNoPoint = ~PointId{0};
using RangeId = std::uint32_t;
inline constexpr RangeId kProgramRange = 0;  // the unit itself, which returns to nothing
inline constexpr RangeId kNoRange = ~RangeId{0};

enum class PointKind : std::uint8_t {
  Entry,      // of the unit: storage has its first values, parameters have come in. Node: the DIVISION
  Start,      // of a label. Node: PAR or SECTION
  End,        // of a label: where a range that ends with it returns. Node: PAR or SECTION
  Statement,  // does what its node, a STAT or one of its kinds, does with data, except what has points of its own
  Condition,  // decides. Node: the COND. Its two ways lead to Holds points, the true one first; there is no false one
              // where the text has it always hold: WHEN ANY
  Chance,     // decides by something that is no condition of the text: TIMES, DEPENDING ON, whether an error came up.
              // Node: the statement
  Holds,      // behind a Condition: it came out as `sense` says. Node: the COND
  Completed,  // behind a statement that can fail: it has not failed. Node: the statement
  Begin,      // the counter of a PERFORM VARYING gets its FROM. Node: the counter's VAR
  Step,       // and its BY is added. Node: the counter's VAR
  Call,       // performs `range`. Node: the statement
  Leave,      // leaves the program: GOBACK, STOP RUN, XCTL, the end of the text. No way out. Node: the statement or
          // DIVISION. Does what the statement does with data, when that has no Statement point: one that cannot fail
};

inline constexpr std::size_t kPointKinds = static_cast<std::size_t>(PointKind::Leave) + 1;
std::string_view NameOf(PointKind kind);  // "statement"

enum class WayKind : std::uint8_t {
  Next,
  True,
  False,
  Jump,       // GO TO, EXIT PARAGRAPH and the like
  Exception,  // to what handles an error: AT END, a USE procedure, a label of HANDLE
  Loop,       // back to the beginning of a loop
};
inline constexpr std::size_t kWayKinds = static_cast<std::size_t>(WayKind::Loop) + 1;
std::string_view NameOf(WayKind kind);  // "next", "jump"

struct Way {
  PointId to = kNoPoint;
  WayKind kind = WayKind::Next;
  bool operator==(const Way&) const = default;
};

struct Point {
  NodeId node = 0;
  RangeId range = kNoRange;  // Call: what it performs
  PointKind kind = PointKind::Statement;
  bool sense = false;      // Holds
  std::uint16_t part = 0;  // Statement, Completed: of several in a row, which the statement has when an operand reads
                           // what another one has just got: MOVE 3 TO I T (I)
};

// What a PERFORM goes through, or the procedures of a SORT, or a USE procedure. Each pair of labels once.
struct PerformRange {
  NodeId first = 0, last = 0;  // PAR or SECTION; the DIVISION for the unit itself
  PointId entry = kNoPoint;    // Start of `first`; Entry
  PointId exit = kNoPoint;     // End of `last`; none for the unit itself
};

enum class FlowGapKind : std::uint8_t {
  UnknownStatement,  // its effect on control is not known; taken to go on behind it
  UnknownLabel,      // a procedure name that is not declared; the way is missing
  NoAlter,           // GO TO without a name that no ALTER sets
  HandledElsewhere,  // an exception that something outside the program may take
  AnyStatement,      // an abend of any statement can lead there; only those of the monitor's commands do in the graph
  Debugging,         // a procedure that runs when the program is made for it: USE FOR DEBUGGING
  OpenReturn,  // the end of a PERFORM that another one, within it, comes by: compilers differ in whether it returns
};
inline constexpr std::size_t kFlowGapKinds = static_cast<std::size_t>(FlowGapKind::OpenReturn) + 1;
std::string_view NameOf(FlowGapKind kind);  // "unknown statement"

struct FlowGap {
  FlowGapKind kind;
  NodeId node = 0;
  std::vector<PointId> points = {};  // what passes these is not known for sure; empty for those of the node
};

// Filled by a language's builder; nothing changes it afterwards.
class FlowGraph {
 public:
  PointId AddPoint(Point point) {
    points_.push_back(point);
    return static_cast<PointId>(points_.size() - 1);
  }
  // Each at most once.
  void AddWay(PointId from, Way way) { drafts_.push_back({from, way}); }
  RangeId AddRange(PerformRange range) {
    ranges_.push_back(range);
    return static_cast<RangeId>(ranges_.size() - 1);
  }
  void AddGap(FlowGap gap) { gaps_.push_back(std::move(gap)); }
  PerformRange& Range(RangeId range) { return ranges_[range]; }
  Point& At(PointId point) { return points_[point]; }
  // To be called once, after all points and ways are there. Keeps the order in which the ways of a point were added.
  void Finish();

  std::span<const Point> Points() const { return points_; }
  std::span<const PerformRange> Ranges() const { return ranges_; }  // [0] is the unit itself
  std::span<const FlowGap> Gaps() const { return gaps_; }
  std::span<const Way> WaysOut(PointId point) const {
    return std::span(ways_).subspan(starts_[point], starts_[point + 1] - starts_[point]);
  }
  // The points of a node in the order of their numbers: of an IF its Statement, of a COND its Condition and Holds …
  // Empty for a node that is none of a point.
  std::span<const PointId> PointsOf(NodeId node) const;
  // Where the data of a statement or condition is handled: its (first) Statement or Condition point. kNoPoint when it
  // has none.
  PointId PointOf(NodeId node) const;
  std::size_t Bytes() const;  // that the graph holds in memory

 private:
  struct Draft {
    PointId from;
    Way way;
  };
  std::vector<Point> points_;
  std::vector<PerformRange> ranges_;
  std::vector<FlowGap> gaps_;
  std::vector<Draft> drafts_;
  std::vector<std::uint32_t> starts_;  // by point, into ways_
  std::vector<Way> ways_;
  std::vector<PointId> byNode_;  // points, ascending by node
};

}  // namespace qmrules::workbench::flow
