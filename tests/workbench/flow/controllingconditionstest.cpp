#include "workbench/flow/controllingconditions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>
#include <random>
#include <set>
#include <tuple>
#include <vector>

#include "workbench/flow/randomflow.h"

namespace qmrules::workbench::flow {

void PrintTo(const ControllingCondition& condition, std::ostream* out) {
  *out << condition.condition << (condition.sense ? " yes" : " no") << " within " << condition.within;
}

namespace {

// How one condition can have come out last before each point: whatever is true of a path, written down path by path.
// A context is the Call that led into the range, with the outcome that it found.
class PlainOutcomes {
 public:
  static constexpr int kUntested = 2;  // beside 0 and 1

  PlainOutcomes(const FlowGraph& flow, NodeId condition) : flow_(flow), condition_(condition) {
    Reach({kProgramRange, kNoPoint, kUntested}, flow.Ranges()[kProgramRange].entry, kUntested);
    while (!open_.empty()) {
      const auto [context, point, outcome] = open_.back();
      open_.pop_back();
      Step(context, point, outcome);
    }
  }

  // By the node of the Call, 0 for the program itself: the outcomes before the point.
  std::map<NodeId, std::set<int>> Before(PointId point) const {
    std::map<NodeId, std::set<int>> outcomes;
    for (const auto& [context, at, outcome] : seen_) {
      if (at == point) outcomes[context.call == kNoPoint ? 0 : flow_.Points()[context.call].node].insert(outcome);
    }
    return outcomes;
  }

 private:
  struct Context {
    RangeId range;
    PointId call;
    int outcome;
    auto operator<=>(const Context&) const = default;
  };

  void Step(const Context& context, PointId point, int outcome) {
    const Point& at = flow_.Points()[point];
    if (point == flow_.Ranges()[context.range].exit) {
      returned_[context].insert(outcome);
      for (const Context& outer : std::set(callers_[context])) Follow(outer, context.call, outcome);
    } else if (at.kind == PointKind::Call) {
      const Context inner{at.range, point, outcome};
      callers_[inner].insert(context);
      Reach(inner, flow_.Ranges()[at.range].entry, outcome);
      for (const int left : std::set(returned_[inner])) Follow(context, point, left);
    } else {
      Follow(context, point,
             at.kind == PointKind::Holds && at.node == condition_ ? static_cast<int>(at.sense) : outcome);
    }
  }

  void Follow(const Context& context, PointId point, int outcome) {
    for (const Way& way : flow_.WaysOut(point)) Reach(context, way.to, outcome);
  }

  void Reach(const Context& context, PointId point, int outcome) {
    if (seen_.insert({context, point, outcome}).second) open_.emplace_back(context, point, outcome);
  }

  const FlowGraph& flow_;
  NodeId condition_;
  std::set<std::tuple<Context, PointId, int>> seen_;
  std::vector<std::tuple<Context, PointId, int>> open_;
  std::map<Context, std::set<Context>> callers_;
  std::map<Context, std::set<int>> returned_;
};

using Sensed = std::set<std::pair<NodeId, bool>>;

struct PlainAnswer {
  bool runs = false;
  Sensed always;
  std::map<NodeId, Sensed> waysIn;
  bool operator==(const PlainAnswer&) const = default;
};

void PrintSensed(const Sensed& conditions, std::ostream* out) {
  for (const auto& [condition, sense] : conditions) *out << ' ' << condition << (sense ? "+" : "-");
}

void PrintTo(const PlainAnswer& answer, std::ostream* out) {
  *out << (answer.runs ? "always" : "never runs");
  PrintSensed(answer.always, out);
  for (const auto& [perform, conditions] : answer.waysIn) {
    *out << "; by " << perform;
    PrintSensed(conditions, out);
  }
}

std::optional<bool> OnlyOutcome(const std::set<int>& outcomes) {
  if (outcomes.size() != 1 || outcomes.contains(PlainOutcomes::kUntested)) return std::nullopt;
  return *outcomes.begin() != 0;
}

PlainAnswer PlainAnswerOf(const FlowGraph& flow, NodeId statement) {
  PlainAnswer answer;
  const PointId point = flow.PointOf(statement);
  answer.runs = !PlainOutcomes(flow, 0).Before(point).empty();
  bool differ = false;
  for (const NodeId condition : test::ConditionsIn(flow)) {
    const auto byWay = PlainOutcomes(flow, condition).Before(point);
    if (byWay.empty() || condition == statement) continue;
    std::set<int> all;
    for (const auto& [perform, outcomes] : byWay) all.insert(outcomes.begin(), outcomes.end());
    const std::optional<bool> always = OnlyOutcome(all);
    if (always) answer.always.insert({condition, *always});
    for (const auto& [perform, outcomes] : byWay) {
      Sensed& onWay = answer.waysIn[perform];
      const std::optional<bool> sense = OnlyOutcome(outcomes);
      if (always || !sense) continue;
      onWay.insert({condition, *sense});
      differ = true;
    }
  }
  if (!differ) answer.waysIn.clear();
  return answer;
}

Sensed SensedOf(const std::vector<ControllingCondition>& conditions) {
  Sensed sensed;
  for (const ControllingCondition& condition : conditions) {
    EXPECT_TRUE(sensed.insert({condition.condition, condition.sense}).second) << "told twice";
  }
  return sensed;
}

PlainAnswer AnswerOf(ConditionFinder& finder, NodeId statement) {
  const StatementConditions found = finder.ConditionsOf(statement);
  PlainAnswer answer{.runs = found.runs, .always = SensedOf(found.always), .waysIn = {}};
  for (const WayIn& way : found.waysIn) answer.waysIn[way.perform] = SensedOf(way.conditions);
  return answer;
}

void CompareOnRandomGraphs(unsigned seed, int rounds, const test::RandomFlowSize& size) {
  std::mt19937 random(seed);
  for (int round = 0; round < rounds; ++round) {
    const FlowGraph flow = test::RandomFlow(random, size);
    const RangeBodies bodies(flow);
    ConditionFinder finder(bodies);
    std::vector<NodeId> asked = test::StatementsIn(flow);
    for (const NodeId condition : test::ConditionsIn(flow)) asked.push_back(condition);
    std::ranges::shuffle(asked, random);
    for (const NodeId statement : asked) {
      ASSERT_EQ(AnswerOf(finder, statement), PlainAnswerOf(flow, statement))
          << "round " << round << ", statement " << statement;
    }
  }
}

TEST(ControllingConditions, WithoutMatchedReturnsAreNeverMore) {
  std::mt19937 random(4);
  std::size_t told = 0;
  for (int round = 0; round < 100; ++round) {
    const FlowGraph flow = test::RandomFlow(random, {.labels = 6, .pointsOfLabel = 4, .ranges = 4, .conditions = 6});
    const RangeBodies matched(flow), unmatched(flow, 0);
    ConditionFinder exact(matched), careful(unmatched);
    for (const NodeId statement : test::StatementsIn(flow)) {
      const Sensed all = AnswerOf(exact, statement).always;
      const Sensed found = AnswerOf(careful, statement).always;
      if (!exact.ConditionsOf(statement).runs) continue;
      ASSERT_TRUE(std::ranges::includes(all, found)) << "round " << round << ", statement " << statement;
      EXPECT_TRUE(careful.ConditionsOf(statement).areCut);
      told += found.size();
    }
  }
  EXPECT_GT(told, 100U);
}

TEST(ControllingConditions, OfGraphsWithoutCallsAreThoseOfEachPath) {
  CompareOnRandomGraphs(1, 200, {.labels = 3, .pointsOfLabel = 5, .ranges = 0, .conditions = 5});
}

TEST(ControllingConditions, OfSmallGraphsAreThoseOfEachPath) {
  CompareOnRandomGraphs(2, 400, {.labels = 4, .pointsOfLabel = 4, .ranges = 2, .conditions = 4});
}

TEST(ControllingConditions, OfGraphsWithManyRangesAreThoseOfEachPath) {
  CompareOnRandomGraphs(3, 80, {.labels = 8, .pointsOfLabel = 4, .ranges = 8, .conditions = 9});
}

// A chain of points behind the program's entry, and labels that are performed from it.
class PerformingProgram {
 public:
  PerformingProgram() { graph_.AddRange({.entry = Add(PointKind::Entry)}); }

  // Behind what was added last.
  NodeId Then(PointKind kind, RangeId range = kNoRange) {
    const PointId before = last_;
    const PointId point = Add(kind);
    graph_.At(point).range = range;
    graph_.AddWay(before, {point});
    return graph_.At(point).node;
  }
  // A test that leaves the program when it comes out true.
  NodeId Guard() {
    const NodeId node = Then(PointKind::Condition);
    const PointId test = last_;
    const PointId fails = graph_.AddPoint({.node = node, .range = kNoRange, .kind = PointKind::Holds, .sense = true});
    graph_.AddWay(test, {fails, WayKind::True});
    graph_.AddWay(fails, {graph_.AddPoint({.node = 0, .range = kNoRange, .kind = PointKind::Leave})});
    last_ = graph_.AddPoint({.node = node, .range = kNoRange, .kind = PointKind::Holds});
    graph_.AddWay(test, {last_, WayKind::False});
    return node;
  }
  PointId Begin() { return Add(PointKind::Start); }
  PointId End() {
    Then(PointKind::End);
    return last_;
  }
  void AddRange(PointId start, PointId end) { graph_.AddRange({.entry = start, .exit = end}); }
  const FlowGraph& Finish() {
    graph_.Finish();
    return graph_;
  }

 private:
  PointId Add(PointKind kind) {
    last_ = graph_.AddPoint({.node = next_++, .range = kNoRange, .kind = kind});
    return last_;
  }

  FlowGraph graph_;
  PointId last_ = 0;
  NodeId next_ = 1;
};

TEST(ControllingConditions, OfARangeThatMoreThanTenThousandStatementsPerformAreNotToldByWay) {
  for (const std::size_t calls : {10'000U, 10'001U}) {
    PerformingProgram program;
    program.Guard();
    for (std::size_t call = 0; call < calls; ++call) program.Then(PointKind::Call, 1);
    const PointId start = program.Begin();
    const NodeId statement = program.Then(PointKind::Statement);
    program.AddRange(start, program.End());
    const RangeBodies bodies(program.Finish());
    const StatementConditions found = ConditionFinder(bodies).ConditionsOf(statement);
    EXPECT_TRUE(found.runs);
    EXPECT_THAT(found.always, testing::SizeIs(1));
    EXPECT_THAT(found.waysIn, testing::IsEmpty());
    EXPECT_EQ(found.areCut, calls > 10'000U);
  }
}

// A condition that two ranges share has to be followed through all that perform them.
TEST(ControllingConditions, ThatTooManyPlacesLieBetweenAreLeftOut) {
  for (const std::size_t statements : {1'000U, 201'000U}) {
    PerformingProgram program;
    program.Then(PointKind::Call, 1);
    program.Then(PointKind::Call, 2);
    for (std::size_t count = 0; count < statements; ++count) program.Then(PointKind::Statement);
    const NodeId last = program.Then(PointKind::Statement);
    const PointId start = program.Begin();
    program.Guard();
    program.AddRange(start, program.End());
    const PointId end = program.End();
    program.AddRange(start, end);
    const RangeBodies bodies(program.Finish());
    const StatementConditions found = ConditionFinder(bodies).ConditionsOf(last);
    EXPECT_TRUE(found.runs);
    EXPECT_THAT(found.always, testing::SizeIs(statements == 1'000U ? 1 : 0));
    EXPECT_EQ(found.areCut, statements > 1'000U);
  }
}

}  // namespace
}  // namespace qmrules::workbench::flow
