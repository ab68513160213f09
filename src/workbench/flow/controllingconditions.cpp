#include "workbench/flow/controllingconditions.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "workbench/flow/callorder.h"
#include "workbench/flow/conditionfacts.h"
#include "workbench/flow/entryfacts.h"
#include "workbench/flow/lastoutcomes.h"

namespace qmrules::workbench::flow {
namespace {

constexpr std::size_t kMostOutcomeBytes = 64U << 20U;
constexpr std::size_t kMostWays = 10'000;

// One way to the statement: the range it runs in then, and the Call that led into the range (none for the program).
struct WayTo {
  RangeId range;
  std::uint32_t place;
  std::optional<CallSite> by;
};

// Which conditions a list holds, each with its sense.
class Senses {
 public:
  explicit Senses(const std::vector<ControllingCondition>& conditions) {
    for (const ControllingCondition& each : conditions) keys_.insert(KeyOfCondition(each));
  }
  bool Has(const ControllingCondition& condition) const { return keys_.contains(KeyOfCondition(condition)); }

 private:
  static std::uint64_t KeyOfCondition(const ControllingCondition& condition) {
    return KeyOf({.condition = condition.condition, .sense = condition.sense});
  }
  std::unordered_set<std::uint64_t> keys_;
};

void KeepCommon(std::vector<ControllingCondition>& conditions, const std::vector<ControllingCondition>& others) {
  const Senses senses(others);
  std::erase_if(conditions, [&senses](const ControllingCondition& known) { return !senses.Has(known); });
}

}  // namespace

struct ConditionFinder::Found {
  explicit Found(const RangeBodies& rangeBodies)
      : bodies(rangeBodies), order(bodies), facts(bodies, order), entries(bodies, order, facts) {}

  LastOutcomes& OutcomesOf(NodeId condition) {
    auto found = outcomes.find(condition);
    if (found != outcomes.end()) return *found->second;
    if (outcomeBytes > kMostOutcomeBytes) {
      outcomes.clear();
      outcomeBytes = 0;
    }
    found = outcomes.emplace(condition, std::make_unique<LastOutcomes>(bodies, order, condition)).first;
    outcomeBytes += found->second->Bytes();
    return *found->second;
  }

  bool Holds(const ConditionFact& fact, const WayTo& way) {
    if (fact.sure) return true;
    LastOutcomes& last = OutcomesOf(fact.condition);
    const std::size_t before = last.Bytes();
    const LastOutcomes::Set set = way.by ? last.At(way.range, way.place, *way.by) : last.At(way.range, way.place);
    outcomeBytes += last.Bytes() - before;
    isCut = isCut || !last.IsComplete();
    return set == (fact.sense ? LastOutcomes::kTrue : LastOutcomes::kFalse);
  }

  std::vector<ControllingCondition> ConditionsOn(const WayTo& way, NodeId without);
  std::vector<ControllingCondition> ConditionsOnAll(PointId point);
  std::map<NodeId, std::vector<ControllingCondition>> ConditionsByWay(PointId point);

  const RangeBodies& bodies;
  CallOrder order;
  ConditionFacts facts;
  EntryFacts entries;
  std::unordered_map<NodeId, std::unique_ptr<LastOutcomes>> outcomes;
  std::size_t outcomeBytes = 0;
  bool isCut = false;  // the answer that is being found
};

// Outermost first.
std::vector<ControllingCondition> ConditionFinder::Found::ConditionsOn(const WayTo& way, NodeId without) {
  const EntryFacts::Found all = entries.At(way.range, way.place, way.by);
  isCut = isCut || all.isCut;
  std::vector<ControllingCondition> conditions;
  for (const ConditionFact& fact : all.facts) {
    if (fact.condition == without || !Holds(fact, way)) continue;
    conditions.push_back(
        {.condition = fact.condition, .sense = fact.sense, .within = fact.within, .ended = fact.ended});
  }
  std::ranges::reverse(conditions);
  return conditions;
}

// Those that all ways in have in common.
std::vector<ControllingCondition> ConditionFinder::Found::ConditionsOnAll(PointId point) {
  std::optional<std::vector<ControllingCondition>> common;
  for (const RangeId range : bodies.RangesWith(point)) {
    auto conditions = ConditionsOn({.range = range, .place = bodies.Of(range).PlaceOf(point), .by = std::nullopt},
                                   bodies.Flow().Points()[point].node);
    if (common) {
      KeepCommon(*common, conditions);
    } else {
      common = std::move(conditions);
    }
  }
  return std::move(common).value_or(std::vector<ControllingCondition>());
}

// By the statement that performs, 0 for the program; those of all ways in by the same statement.
std::map<NodeId, std::vector<ControllingCondition>> ConditionFinder::Found::ConditionsByWay(PointId point) {
  std::map<NodeId, std::vector<ControllingCondition>> byPerform;
  const auto take = [&](NodeId perform, const WayTo& way) {
    auto conditions = ConditionsOn(way, bodies.Flow().Points()[point].node);
    const auto [at, isFirst] = byPerform.try_emplace(perform, std::move(conditions));
    if (!isFirst) KeepCommon(at->second, conditions);
  };
  std::size_t ways = 0;
  for (const RangeId range : bodies.RangesWith(point)) ways += bodies.CallsOf(range).size();
  if (ways > kMostWays) {
    isCut = true;
    return {{0, ConditionsOnAll(point)}};
  }
  for (const RangeId range : bodies.RangesWith(point)) {
    const std::uint32_t place = bodies.Of(range).PlaceOf(point);
    if (range == kProgramRange) take(0, {.range = range, .place = place, .by = std::nullopt});
    for (const CallSite& call : bodies.CallsOf(range)) {
      const PointId caller = bodies.Of(call.caller).points[call.place];
      take(bodies.Flow().Points()[caller].node, {.range = range, .place = place, .by = call});
    }
  }
  return byPerform;
}

ConditionFinder::ConditionFinder(const RangeBodies& bodies) : bodies_(bodies) {}
ConditionFinder::~ConditionFinder() = default;

StatementConditions ConditionFinder::ConditionsOf(NodeId statement) {
  StatementConditions result;
  const PointId point = bodies_.Flow().PointOf(statement);
  result.runs = point != kNoPoint && !bodies_.RangesWith(point).empty();
  if (!result.runs) return result;
  if (!found_) found_ = std::make_unique<Found>(bodies_);
  found_->isCut = !bodies_.AreReturnsMatched();
  auto byPerform = found_->ConditionsByWay(point);
  result.areCut = found_->isCut;
  result.always = byPerform.begin()->second;
  for (const auto& [perform, conditions] : byPerform) KeepCommon(result.always, conditions);
  bool differ = false;
  const Senses always(result.always);
  for (auto& [perform, conditions] : byPerform) {
    std::erase_if(conditions, [&always](const auto& known) { return always.Has(known); });
    differ = differ || !conditions.empty();
    result.waysIn.push_back({.perform = perform, .conditions = std::move(conditions)});
  }
  if (!differ) result.waysIn.clear();
  return result;
}

}  // namespace qmrules::workbench::flow
