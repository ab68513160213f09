// PERFORM in all its forms, and the procedures of SORT, MERGE and XML PARSE.

#include <algorithm>
#include <cctype>
#include <string_view>

#include "workbench/flow/cobol/unitflow.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::Role;
using codemodel::cobol::Verb;

namespace {

// A number above 0.
bool IsPositive(std::string_view literal) {
  const bool digits = std::ranges::all_of(literal, [](unsigned char c) { return std::isdigit(c) != 0; });
  return digits && std::ranges::any_of(literal, [](char c) { return c != '0'; });
}

}  // namespace

void UnitFlow::Perform(NodeId node) {
  Performed performed{node, ways_.Pass(node, PointKind::Statement), kNoRange, 0};
  if (nodes_[node].entity == Entity::Perform) {
    labels_.RangesOf(node, ranges_);
    if (ranges_.empty()) return;
    performed.range = ranges_.front().range;
  } else {
    for (NodeId child = node + 1; child <= nodes_[node].last; child = nodes_[child].last + 1) {
      if (nodes_[child].entity == Entity::Block) performed.block = child;
    }
  }
  const std::size_t exits = exits_.size();
  Control(performed);
  for (std::size_t at = exits; at < exits_.size(); ++at) ways_.Open(exits_[at], WayKind::Jump);
  exits_.resize(exits);
}

// Reads what the PERFORM is controlled by. The counters from `first` on are its own.
void UnitFlow::Control(const Performed& performed) {
  const std::size_t first = counters_.size();
  NodeId times = 0, condition = 0;
  for (NodeId child = performed.node + 1; child <= nodes_[performed.node].last; child = nodes_[child].last + 1) {
    if (nodes_[child].entity == Entity::Cond) {
      (counters_.size() > first ? counters_.back().condition : condition) = child;
    } else if (nodes_[child].role == Role::Varying) {
      counters_.push_back({child, 0});
    } else if (nodes_[child].role == Role::Times) {
      times = child;
    }
  }
  const std::span<const Counter> own = std::span(counters_).subspan(first);
  const bool behind = (nodes_[performed.node].flags & codemodel::kTestAfter) != 0;
  if (std::ranges::any_of(own, [](const Counter& counter) { return counter.condition == 0; })) {
    graph_.AddGap({FlowGapKind::UnknownStatement, performed.node});
    Times(performed, 0);
  } else if (!own.empty()) {
    behind ? VaryingBehind(performed, first) : VaryingBefore(performed, first);
  } else if (condition != 0) {
    const bool never = nodes_[condition].last == condition && model_.Text(nodes_[condition].name) == "EXIT";
    never ? Forever(performed) : behind ? UntilBehind(performed, condition) : Until(performed, condition);
  } else if (times != 0) {
    Times(performed, times);
  } else {
    Body(performed, kNoPoint);
  }
  counters_.resize(first);
}

PointId UnitFlow::Body(const Performed& performed, PointId cycle) {
  const auto first = static_cast<PointId>(graph_.Points().size());
  if (performed.range != kNoRange) {
    ways_.Pass(ways_.AddCall(performed.node, performed.range));
  } else if (performed.block != 0) {
    loops_.push_back(cycle);
    Branch(performed.block);
    loops_.pop_back();
  }
  return first < graph_.Points().size() ? first : kNoPoint;
}

void UnitFlow::Times(const Performed& performed, NodeId times) {
  const PointId chance = ways_.Add(performed.node, PointKind::Chance);
  const bool once = times != 0 && nodes_[times].entity == Entity::Const && IsPositive(model_.Text(nodes_[times].name));
  if (once) {
    const PointId first = Body(performed, chance);
    ways_.Reach(chance);
    if (first != kNoPoint) ways_.Lead(chance, first, WayKind::Loop);
  } else {
    ways_.Pass(chance);
    Body(performed, chance);
    ways_.ReachAgain(chance);
  }
  ways_.Open(chance);
}

void UnitFlow::Until(const Performed& performed, NodeId condition) {
  const Test test = ReachTest(condition);
  ways_.Open(test.isFalse);
  Body(performed, test.condition);
  ways_.ReachAgain(test.condition);
  ways_.Open(test.isTrue);
}

void UnitFlow::UntilBehind(const Performed& performed, NodeId condition) {
  const Test test = MakeTest(condition);
  const PointId first = Body(performed, test.condition);
  ways_.Reach(test.condition);
  ways_.Lead(test.isFalse, first != kNoPoint ? first : test.condition, WayKind::Loop);
  ways_.Open(test.isTrue);
}

void UnitFlow::Forever(const Performed& performed) {
  Body(performed, performed.statement);
  ways_.ReachAgain(performed.statement);
}

std::vector<UnitFlow::Level> UnitFlow::MakeLevels(std::size_t first) {
  std::vector<Level> levels(counters_.size() - first);
  for (std::size_t at = 0; at < levels.size(); ++at) {
    const Counter& counter = counters_[first + at];
    Level& level = levels[at];
    level.begin = ways_.Add(counter.variable, PointKind::Begin);
    level.test = MakeTest(counter.condition);
    level.step = ways_.Add(counter.variable, PointKind::Step);
  }
  return levels;
}

// PERFORM VARYING I … UNTIL C1 AFTER J … UNTIL C2, tests before:
//
//   begin I > begin J > C1 ─no─> C2 ─no─> body > step J, again to C2
//                        │        └─yes─> step I, again to begin J
//                        └─yes─> behind
//
// Each counter but the first begins anew whenever the one before it has been stepped.
void UnitFlow::VaryingBefore(const Performed& performed, std::size_t first) {
  const std::vector<Level> levels = MakeLevels(first);
  const std::size_t innermost = levels.size() - 1;
  const auto entryOf = [&](std::size_t at) {
    return at < innermost ? levels[at + 1].begin : levels[at].test.condition;
  };
  ways_.Pass(levels[0].begin);
  if (levels.size() > 2) SetInnerCounters(performed, first);
  ways_.Reach(entryOf(0));
  for (std::size_t at = 0; at <= innermost; ++at) {
    const Level& level = levels[at];
    if (at > 0) {
      ways_.Lead(level.begin, levels[at - 1].test.condition, WayKind::Next);
      ways_.Lead(level.test.isTrue, levels[at - 1].step, WayKind::Next);
    }
    if (at < innermost) ways_.Lead(level.test.isFalse, entryOf(at + 1), WayKind::Next);
    ways_.Lead(level.step, entryOf(at), WayKind::Loop);
  }
  ways_.Open(levels[innermost].test.isFalse);
  Body(performed, levels[innermost].step);
  ways_.Reach(levels[innermost].step);
  ways_.Open(levels[0].test.isTrue);
}

// Some compilers give all counters their first values at the beginning, others those from the third on only when they
// are needed.
void UnitFlow::SetInnerCounters(const Performed& performed, std::size_t first) {
  const PointId chance = ways_.Pass(performed.node, PointKind::Chance);
  const std::size_t base = ways_.PutAside();
  ways_.Open(chance);
  for (std::size_t at = first + 2; at < counters_.size(); ++at) {
    ways_.Pass(counters_[at].variable, PointKind::Begin);
  }
  ways_.Join(base);
}

// The same with the tests after:
//
//   begin I > begin J > body > C2 ─no─> step J, again to body
//                               └─yes─> C1 ─no─> step I, again to begin J
//                                        └─yes─> behind
void UnitFlow::VaryingBehind(const Performed& performed, std::size_t first) {
  const std::vector<Level> levels = MakeLevels(first);
  const std::size_t innermost = levels.size() - 1;
  for (const Level& level : levels) ways_.Pass(level.begin);
  const PointId body = Body(performed, levels[innermost].test.condition);
  ways_.Reach(levels[innermost].test.condition);
  for (std::size_t at = 0; at <= innermost; ++at) {
    const Level& level = levels[at];
    ways_.Lead(level.test.isFalse, level.step, WayKind::Next);
    const PointId entry = body != kNoPoint ? body : level.test.condition;
    ways_.Lead(level.step, at < innermost ? levels[at + 1].begin : entry, WayKind::Loop);
    if (at > 0) ways_.Lead(level.test.isTrue, levels[at - 1].test.condition, WayKind::Next);
  }
  ways_.Open(levels[0].test.isTrue);
}

void UnitFlow::ExitPerform(NodeId node, bool cycle) {
  if (loops_.empty()) return Unknown(node);
  const PointId point = ways_.Add(node, PointKind::Statement);
  ways_.Reach(point);
  if (cycle && loops_.back() != kNoPoint) {
    ways_.Lead(point, loops_.back(), WayKind::Jump);
  } else {
    exits_.push_back(point);
  }
}

// SORT and MERGE run each of their procedures once, XML PARSE its one for each event, before which it sets registers.
void UnitFlow::Procedures(NodeId node) {
  const PointId statement = ways_.Pass(node, PointKind::Statement);
  labels_.RangesOf(node, ranges_);
  if (VerbOf(node) != Verb::XmlParse) {
    for (const auto& named : ranges_) ways_.Pass(ways_.AddCall(node, named.range));
  } else if (!ranges_.empty()) {
    const PointId chance = ways_.Pass(node, PointKind::Chance);
    const std::size_t base = ways_.PutAside();
    ways_.Open(chance);
    ways_.Pass(ways_.AddCall(node, ranges_.front().range));
    ways_.ReachAgain(statement);
    ways_.Join(base);
  }
}

}  // namespace qmrules::workbench::flow::cobol
