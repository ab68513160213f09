#include "desktop/locator/cataloguesearch.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include "catalogue/gateway.h"
#include "desktop/locator/entryplaces.h"
#include "shell/text.h"

namespace qmrules::desktop {

namespace {

using Clock = std::chrono::steady_clock;

struct Kind {
  std::string_view entity;
  std::string_view nameAttribute;
  std::string_view placeAttribute = {};  // "" where the place is found by relations
};

// What is few comes first, so that something is offered at once.
constexpr Kind kKinds[] = {
    {catalogue::kBusinessFunction, "Name"},
    {"COBOL", "Name", "Source"},
    {"NATURAL", "Name", "Source"},
    {"PLI", "Name", "Source"},
    {"RPG", "Name", "Source"},
    {catalogue::kRuleSet, "Name"},
    {catalogue::kRule, "RuleName"},
};

constexpr auto kStep = std::chrono::milliseconds(10);
constexpr auto kShortRun = std::chrono::milliseconds(3);
constexpr auto kLongRun = std::chrono::milliseconds(8);
constexpr std::int64_t kFirstRun = 4'000;
constexpr std::int64_t kShortestRun = 250;
constexpr std::int64_t kLongestRun = 1'000'000;

// The greatest ID of the entity's objects; 0 when there is none.
std::int64_t LastID(platform::Repository& repository, std::string_view entity) {
  const auto fetch = catalogue::NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, entity, "<ID"));
  return fetch->Execute("") ? 0 : catalogue::IDField(fetch->Row(), "ID");
}

std::string FilterOf(const Kind& kind, const LocatorQuery& query, std::int64_t fromID, std::int64_t endID) {
  std::string filter = fmt::format("ID>={}&ID<{}", fromID, endID);
  for (const std::string& pattern : query.Patterns()) {
    filter += fmt::format("&{} like {}", kind.nameAttribute, platform::FilterValue(pattern));
  }
  return filter;
}

}  // namespace

CatalogueSearch::CatalogueSearch(platform::Repository& repository, std::string projectKey, std::string_view text,
                                 std::size_t limit)
    : repository_(repository), projectKey_(std::move(projectKey)), query_(text), limit_(limit), run_(kFirstRun) {
  if (query_.IsEmpty() || limit_ == 0) {
    kind_ = std::size(kKinds);
  } else {
    BeginKind();
  }
}

void CatalogueSearch::BeginKind() {
  nextID_ = 1;
  lastID_ = LastID(repository_, kKinds[kind_].entity);
}

bool CatalogueSearch::Continue() {
  const auto end = Clock::now() + kStep;
  while (kind_ < std::size(kKinds) && Clock::now() < end) {
    if (nextID_ <= lastID_) {
      SearchRun();
    } else if (++kind_ < std::size(kKinds)) {
      BeginKind();
    }
  }
  FindPlaces();
  return kind_ < std::size(kKinds);
}

void CatalogueSearch::SearchRun() {
  const Kind& kind = kKinds[kind_];
  const auto begin = Clock::now();
  const auto fetch = catalogue::NewQuery(repository_);
  const std::string place = kind.placeAttribute.empty() ? std::string() : fmt::format(",{}:Place", kind.placeAttribute);
  fetch->SetRoot(fetch->AddObject(true, kind.entity, fmt::format("ID,{}:Shown{}", kind.nameAttribute, place),
                                  FilterOf(kind, query_, nextID_, nextID_ + run_)));
  for (fetch->Execute(projectKey_); !fetch->Eof(); fetch->MoveNext()) Consider(fetch->Row());
  nextID_ += run_;
  AdaptRun(Clock::now() - begin);
}

void CatalogueSearch::AdaptRun(Clock::duration taken) {
  if (taken < kShortRun) run_ = std::min(run_ * 2, kLongestRun);
  if (taken > kLongRun) run_ = std::max(run_ / 2, kShortestRun);
}

bool CatalogueSearch::Rank::IsBefore(const Rank& other) const {
  return std::tie(isInner, nameLength, foldedName, kind, id) <
         std::tie(other.isInner, other.nameLength, other.foldedName, other.kind, other.id);
}

void CatalogueSearch::Consider(const platform::FetchRow& row) {
  std::string name = row.Item("Shown").Text();
  const auto match = query_.Match(name);
  if (!match) return;
  const Kind& kind = kKinds[kind_];
  const std::int32_t id = catalogue::IDField(row, "ID");
  Rank rank{!match->atWordStarts, match->nameLength, shell::FoldCase(name), kind_, id};
  if (candidates_.size() == limit_ && !rank.IsBefore(candidates_.back().rank)) return;
  const bool hasPlace = !kind.placeAttribute.empty();
  Candidate candidate{std::move(rank),
                      {.entity = std::string(kind.entity),
                       .name = std::move(name),
                       .place = hasPlace ? row.Item("Place").Text() : std::string(),
                       .key = catalogue::MakeKey(kind.entity, id)},
                      hasPlace};
  const auto place =
      std::upper_bound(candidates_.begin(), candidates_.end(), candidate.rank,
                       [](const Rank& rank, const Candidate& standing) { return rank.IsBefore(standing.rank); });
  candidates_.insert(place, std::move(candidate));
  if (candidates_.size() > limit_) candidates_.pop_back();
}

void CatalogueSearch::FindPlaces() {
  std::vector<LocatorEntry*> unplaced;
  for (Candidate& candidate : candidates_) {
    if (!candidate.hasPlace) unplaced.push_back(&candidate.entry);
    candidate.hasPlace = true;
  }
  PutPlaces(repository_, projectKey_, unplaced);
  best_.clear();
  for (const Candidate& candidate : candidates_) best_.push_back(candidate.entry);
}

}  // namespace qmrules::desktop
