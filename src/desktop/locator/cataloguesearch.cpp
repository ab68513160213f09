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
// What was found longer ago may have changed since.
constexpr auto kFreshFor = std::chrono::seconds(10);
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
    : repository_(repository),
      projectKey_(std::move(projectKey)),
      text_(text),
      query_(text),
      limit_(limit),
      run_(kFirstRun) {
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

std::unique_ptr<LocatorSearch> CatalogueSearch::NarrowedTo(std::string_view text) const {
  const bool isFresh = Clock::now() - begun_ < kFreshFor;
  if (query_.IsEmpty() || hasLeftOut_ || !isFresh || !text.starts_with(text_)) return nullptr;
  auto narrowed = std::make_unique<CatalogueSearch>(*this);
  narrowed->text_ = text;
  narrowed->query_ = LocatorQuery(text);
  narrowed->candidates_.clear();
  narrowed->best_.clear();
  for (Candidate candidate : candidates_) {
    const auto match = narrowed->query_.Match(candidate.entry.name);
    if (!match) continue;
    candidate.rank.isInner = !match->atWordStarts;
    narrowed->Insert(std::move(candidate));
  }
  return narrowed;
}

// The rules are by far the most and come last.
int CatalogueSearch::Percent() const {
  if (kind_ >= std::size(kKinds)) return 100;
  const bool isLast = kind_ + 1 == std::size(kKinds);
  return isLast && lastID_ > 0 ? static_cast<int>(std::min((nextID_ - 1) * 100 / lastID_, std::int64_t{100})) : 0;
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
  if (candidates_.size() == limit_ && !rank.IsBefore(candidates_.back().rank)) {
    hasLeftOut_ = true;
    return;
  }
  const bool hasPlace = !kind.placeAttribute.empty();
  Insert(Candidate{std::move(rank),
                   {.entity = std::string(kind.entity),
                    .name = std::move(name),
                    .place = hasPlace ? row.Item("Place").Text() : std::string(),
                    .key = catalogue::MakeKey(kind.entity, id)},
                   hasPlace});
}

void CatalogueSearch::Insert(Candidate candidate) {
  const auto place =
      std::upper_bound(candidates_.begin(), candidates_.end(), candidate.rank,
                       [](const Rank& rank, const Candidate& standing) { return rank.IsBefore(standing.rank); });
  candidates_.insert(place, std::move(candidate));
  if (candidates_.size() <= limit_) return;
  candidates_.pop_back();
  hasLeftOut_ = true;
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
