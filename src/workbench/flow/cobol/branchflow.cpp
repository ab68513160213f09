// IF, EVALUATE, SEARCH, and what depends on the outcome of a statement.

#include <utility>

#include "workbench/flow/cobol/unitflow.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::Role;
using codemodel::cobol::Verb;

void UnitFlow::Branch(NodeId block) {
  if (block == 0) return;
  // What is nested too deeply stands behind the branch, whatever comes out.
  if ((nodes_[block].flags & codemodel::kGap) != 0) graph_.AddGap({FlowGapKind::UnknownStatement, block});
  Statements(block);
}

// What the text decides already: WHEN ANY, and TRUE and FALSE compared with each other, which have no operands.
bool UnitFlow::AlwaysHolds(NodeId condition) const {
  if (nodes_[condition].last != condition) return false;
  const std::string_view text = model_.Text(nodes_[condition].name);
  return text == "ANY" || text == "TRUE";
}

UnitFlow::Test UnitFlow::MakeTest(NodeId condition) {
  Test test;
  test.condition = ways_.Add(condition, PointKind::Condition);
  test.isTrue = ways_.Add(condition, PointKind::Holds, true);
  ways_.Lead(test.condition, test.isTrue, WayKind::True);
  test.isFalse = ways_.Add(condition, PointKind::Holds, false);
  if (!AlwaysHolds(condition)) ways_.Lead(test.condition, test.isFalse, WayKind::False);
  return test;
}

UnitFlow::Test UnitFlow::ReachTest(NodeId condition) {
  const Test test = MakeTest(condition);
  ways_.Reach(test.condition);
  return test;
}

// IF and EVALUATE.
void UnitFlow::Decide(NodeId node) {
  ways_.Pass(node, PointKind::Statement);
  Outcomes(node, kNoPoint);
}

// Each condition leads to the block behind it, or to the next condition; the last one to the block of the role Else, or
// else `again`, or past them all where that is none.
void UnitFlow::Outcomes(NodeId node, PointId again) {
  const std::size_t base = ways_.Base();
  Test test;
  const auto open = [this](PointId& outcome) {
    if (outcome == kNoPoint) return;
    ways_.Open(outcome);
    outcome = kNoPoint;
  };
  for (NodeId child = node + 1; child <= nodes_[node].last; child = nodes_[child].last + 1) {
    if (nodes_[child].entity == Entity::Cond) {
      // What comes behind the branches before it waits.
      if (test.isTrue != kNoPoint) {
        open(test.isTrue);
        ways_.PutAside();
      }
      open(test.isFalse);
      test = ReachTest(child);
    } else if (nodes_[child].entity == Entity::Block) {
      open(nodes_[child].role == Role::Else ? test.isFalse : test.isTrue);
      Branch(child);
      if (test.condition != kNoPoint) ways_.PutAside();
    }
  }
  if (again != kNoPoint && test.isFalse != kNoPoint) {
    ways_.Lead(test.isFalse, again, WayKind::Loop);
    test.isFalse = kNoPoint;
  }
  open(test.isTrue);
  open(test.isFalse);
  ways_.Join(base);
}

// The statement counts, then its conditions are tried, until one holds or the table ends.
void UnitFlow::Search(NodeId node, NodeId outcomes) {
  const PointId count = ways_.Pass(node, PointKind::Statement);
  ways_.Pass(outcomes, PointKind::Statement);
  const NodeId first = outcomes + 1;
  const bool any = first <= nodes_[outcomes].last && nodes_[first].entity == Entity::Cond;
  const bool tellsEnd = any && nodes_[first].last == first && model_.Text(nodes_[first].name) == "AT END";
  if (tellsEnd) {
    bool whens = false;
    for (NodeId child = nodes_[first].last + 1; child <= nodes_[outcomes].last; child = nodes_[child].last + 1) {
      if (nodes_[child].entity == Entity::Cond) whens = true;
    }
    return Outcomes(outcomes, whens ? count : kNoPoint);
  }
  if (!any) return;
  const PointId chance = ways_.Pass(outcomes, PointKind::Chance);
  const std::size_t base = ways_.PutAside();
  ways_.Open(chance);
  Outcomes(outcomes, count);
  ways_.Join(base);
}

// Adds the IFs behind the statement to phrases_; gives the last one.
NodeId UnitFlow::FindPhrases(NodeId node) {
  const NodeId end = nodes_[nodes_[node].parent].last;
  NodeId last = node;
  for (NodeId next = nodes_[node].last + 1; next <= end; next = nodes_[next].last + 1) {
    if (nodes_[next].entity != Entity::If || VerbOf(next) != Verb::Phrase) break;
    last = next;
    Phrase phrase;
    phrase.node = next;
    for (NodeId child = next + 1; child <= nodes_[next].last; child = nodes_[child].last + 1) {
      if (nodes_[child].entity == Entity::Cond) phrase.condition = child;
      if (nodes_[child].entity != Entity::Block) continue;
      (nodes_[child].role == Role::Else ? phrase.success : phrase.failure) = child;
    }
    if (phrase.condition == 0) continue;
    const std::string_view text = model_.Text(nodes_[phrase.condition].name);
    phrase.negated = text.starts_with("NOT ") || text == "WITH DATA";
    if (phrase.negated) std::swap(phrase.failure, phrase.success);
    phrases_.push_back(phrase);
  }
  return last;
}

NodeId UnitFlow::WithPhrases(NodeId node) {
  const std::size_t first = phrases_.size();
  const NodeId last = FindPhrases(node);
  Dispatch(node);
  const std::size_t base = Errors(node, phrases_.size() > first);
  if (phrases_.size() > first) Phrases(node, first);
  ways_.Join(base);
  phrases_.resize(first);
  return last;
}

// The phrases from `first` on are of the statement: one failure after another is asked for; when there was none, the
// statement has been completed. Calls for other phrases come and go behind them meanwhile.
void UnitFlow::Phrases(NodeId node, std::size_t first) {
  const std::size_t base = ways_.Base();
  const std::size_t end = phrases_.size();
  std::size_t successes = 0;
  for (std::size_t at = first; at < end; ++at) {
    const Phrase phrase = phrases_[at];
    ways_.Pass(phrase.node, PointKind::Statement);
    const Test test = ReachTest(phrase.condition);
    ways_.Open(phrase.negated ? test.isFalse : test.isTrue, phrase.failure != 0 ? WayKind::Exception : WayKind::Next);
    Branch(phrase.failure);
    ways_.PutAside();
    ways_.Open(phrase.negated ? test.isTrue : test.isFalse);
    if (phrase.success != 0) ++successes;
  }
  PassParts(node, PointKind::Completed);
  for (std::size_t at = first; at < end; ++at) {
    const Phrase phrase = phrases_[at];
    if (phrase.success == 0 || nodes_[phrase.success].last == phrase.success) continue;
    if (successes == 1) {
      Branch(phrase.success);
      continue;
    }
    // Which of several ones runs is not told.
    const PointId chance = ways_.Pass(phrase.node, PointKind::Chance);
    const std::size_t before = ways_.PutAside();
    ways_.Open(chance);
    Branch(phrase.success);
    ways_.Join(before);
  }
  ways_.Join(base);
}

// An error that no phrase is about passes the phrases by: the program goes on behind them when it looks at the status
// of the file; without one it is ended.
bool UnitFlow::GoesOnAfterError(NodeId node) const {
  switch (VerbOf(node)) {
    case Verb::Read:
    case Verb::Write:
    case Verb::Rewrite:
    case Verb::Delete:
    case Verb::Start:
      break;
    default:
      return false;
  }
  for (NodeId child = node + 1; child <= nodes_[node].last; child = nodes_[child].last + 1) {
    const NodeId file = nodes_[child].entity == Entity::Ref ? nodes_[child].declaration : 0;
    if (file != 0 && nodes_[file].entity == Entity::File && model_.File(file).status != 0) return true;
  }
  return false;
}

// The statement's errors, with the USE procedures that they make run. What comes behind them is put aside, until Join
// with what this gives.
std::size_t UnitFlow::Errors(NodeId node, bool hasPhrases) {
  const std::size_t base = ways_.Base();
  useRanges_.clear();
  if (!uses_.Empty()) uses_.RangesFor(node, useRanges_);
  const bool goesOn = useRanges_.empty() && hasPhrases && GoesOnAfterError(node);
  if (useRanges_.empty() && !goesOn) return base;
  const PointId chance = ways_.Add(node, PointKind::Chance);
  ways_.Reach(chance);
  for (const RangeId range : useRanges_) {
    const PointId call = ways_.AddCall(node, range);
    ways_.Lead(chance, call, WayKind::Exception);
    ways_.Open(call);
  }
  if (goesOn) ways_.Open(chance, WayKind::Exception);
  ways_.PutAside();
  ways_.Open(chance);
  return base;
}

}  // namespace qmrules::workbench::flow::cobol
