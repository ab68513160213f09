#include "catalogue/sequence.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <unordered_set>
#include <utility>

#include "catalogue/gateway.h"
#include "platform/error.h"

namespace qmrules::catalogue {

using platform::Error;
using platform::Object;
using platform::Repository;

namespace {

std::string IDFilter(std::int32_t id) {
  return fmt::format("ID={}", id);
}

std::int64_t NumberAtEnd(Repository& repository, const ChildPlace& place) {
  const auto fetch = NewQuery(repository);
  const auto child = fetch->AddObject(false, place.childEntity, "<SeqNo");
  const auto relation = fetch->AddRelation(place.relation, false, "", child);
  fetch->SetRoot(fetch->AddObject(false, place.parentEntity, "", IDFilter(place.parentID), relation));
  if (fetch->Execute("")) return 1;
  return fetch->Row().Item("SeqNo").Value().Integer() + 1;
}

std::int64_t NumberOf(Repository& repository, const ChildPlace& place) {
  const auto fetch = NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, place.childEntity, "SeqNo", IDFilter(place.afterID)));
  if (fetch->Execute("")) {
    throw Error(fmt::format("There is no object {} to go behind.", MakeKey(place.childEntity, place.afterID)));
  }
  return fetch->Row().Item("SeqNo").Value().Integer();
}

// Moves up the unbroken run of numbers behind `number`.
void MakeRoom(Repository& repository, const ChildPlace& place, std::int64_t number) {
  const auto fetch = NewQuery(repository);
  const auto child = fetch->AddObject(false, place.childEntity, "ID,>SeqNo", fmt::format("SeqNo>{}", number));
  const auto relation = fetch->AddRelation(place.relation, false, "", child);
  fetch->SetRoot(fetch->AddObject(false, place.parentEntity, "", IDFilter(place.parentID), relation));

  std::int64_t expected = number + 1;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const std::int64_t taken = fetch->Row().Item("SeqNo").Value().Integer();
    if (taken > expected) return;
    expected = taken + 1;
    const auto moved = repository.object(MakeKey(place.childEntity, IDField(fetch->Row(), "ID")));
    moved->Edit();
    moved->Attrs("SeqNo", expected);
    moved->Post();
  }
}

SwappedNumbers Swap(Object& first, Object& second) {
  const SwappedNumbers swapped{second.Attrs("SeqNo").Integer(), first.Attrs("SeqNo").Integer()};
  first.Edit();
  first.Attrs("SeqNo", swapped.first);
  first.Post();
  second.Edit();
  second.Attrs("SeqNo", swapped.second);
  second.Post();
  return swapped;
}

// The child beside `id` among the rows of an executed fetch, each child counting once, where it first stands.
std::optional<std::int32_t> Neighbour(platform::Fetch& fetch, std::int32_t id, Direction direction) {
  std::unordered_set<std::int32_t> seen;
  std::optional<std::int32_t> before;
  bool found = false;
  for (; !fetch.Eof(); fetch.MoveNext()) {
    const std::int32_t child = IDField(fetch.Row(), "ID");
    if (!seen.insert(child).second) continue;
    if (found) return child;
    found = child == id;
    if (found && direction == Direction::Up) return before;
    before = child;
  }
  return std::nullopt;
}

}  // namespace

std::int64_t NextSeqNo(Repository& repository, const ChildPlace& place) {
  if (place.afterID == 0) return NumberAtEnd(repository, place);
  const std::int64_t number = NumberOf(repository, place);
  const auto transaction = repository.BeginTransaction();
  MakeRoom(repository, place, number);
  transaction->Commit();
  return number + 1;
}

SwappedNumbers SwapRules(Repository& repository, std::int32_t firstID, std::int32_t secondID) {
  const auto first = repository.object(MakeKey(kRule, firstID));
  const auto second = repository.object(MakeKey(kRule, secondID));
  return Swap(*first, *second);
}

SwappedNumbers SwapRuleSets(Repository& repository, std::int32_t functionID, std::int32_t firstID,
                            std::int32_t secondID) {
  const auto fetch = NewQuery(repository);
  const auto set = fetch->AddObject(false, kRuleSet, "ID:SetID", fmt::format("(ID={}|ID={})", firstID, secondID));
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, kRuleSetCall, "ID:CallID", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, kBusinessFunction, "", IDFilter(functionID), triggers));

  std::unique_ptr<Object> first;
  std::unique_ptr<Object> second;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    auto& side = IDField(fetch->Row(), "SetID") == firstID ? first : second;
    side = repository.object(MakeKey(kRuleSetCall, IDField(fetch->Row(), "CallID")));
  }
  fetch->Reset();
  for (const auto& [side, id] : {std::pair(first.get(), firstID), std::pair(second.get(), secondID)}) {
    if (side != nullptr) continue;
    throw Error(
        fmt::format("{} is not triggered by {}.", MakeKey(kRuleSet, id), MakeKey(kBusinessFunction, functionID)));
  }
  return Swap(*first, *second);
}

std::optional<std::int32_t> NeighbourRule(Repository& repository, std::string_view projectKey, std::int32_t ruleSetID,
                                          std::int32_t ruleID, Direction direction) {
  const auto fetch = NewQuery(repository);
  const auto rule = fetch->AddObject(false, kRule, "ID,>SeqNo");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, kRuleSet, "", IDFilter(ruleSetID), has));
  fetch->Execute(projectKey);
  return Neighbour(*fetch, ruleID, direction);
}

std::optional<std::int32_t> NeighbourRuleSet(Repository& repository, std::string_view projectKey,
                                             std::int32_t functionID, std::int32_t ruleSetID, Direction direction) {
  const auto fetch = NewQuery(repository);
  const auto set = fetch->AddObject(true, kRuleSet, "ID");
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, kRuleSetCall, ">SeqNo", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, kBusinessFunction, "", IDFilter(functionID), triggers));
  fetch->Execute(projectKey);
  return Neighbour(*fetch, ruleSetID, direction);
}

}  // namespace qmrules::catalogue
