#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/locator/locatormatch.h"
#include "desktop/locator/locatorsource.h"
#include "platform/repository.h"

namespace qmrules::desktop {

// One search of the catalogue. Each kind of objects is searched in runs of IDs, one fetch for each run. Runs grow and
// shrink with the time that they take: how many rows have to be read for one match, nobody knows beforehand.
class CatalogueSearch final : public LocatorSearch {
 public:
  // `repository` outlives this.
  CatalogueSearch(platform::Repository& repository, std::string projectKey, std::string_view text, std::size_t limit);

  bool Continue() override;
  const std::vector<LocatorEntry>& Best() const override { return best_; }

 private:
  // What an entry's place in the list goes by; the lesser stands first.
  struct Rank {
    bool isInner = false;
    std::size_t nameLength = 0;
    std::string foldedName;
    std::size_t kind = 0;
    std::int32_t id = 0;
    bool IsBefore(const Rank& other) const;
  };
  struct Candidate {
    Rank rank;
    LocatorEntry entry;
    bool hasPlace = false;
  };

  void BeginKind();
  void SearchRun();
  void Consider(const platform::FetchRow& row);
  void AdaptRun(std::chrono::steady_clock::duration taken);
  void FindPlaces();

  platform::Repository& repository_;
  std::string projectKey_;
  LocatorQuery query_;
  std::size_t limit_;
  std::vector<Candidate> candidates_;  // the best, the best first
  std::vector<LocatorEntry> best_;
  std::size_t kind_ = 0;  // that is searched
  std::int64_t nextID_ = 0;
  std::int64_t lastID_ = 0;  // of the kind's objects
  std::int64_t run_;         // IDs
};

}  // namespace qmrules::desktop
