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
//
// While no match had to be left out, a text that is typed on is searched for from there: so what stands at the end of a
// large catalogue is found while its name is being typed.
class CatalogueSearch final : public LocatorSearch {
 public:
  // `repository` outlives this.
  CatalogueSearch(platform::Repository& repository, std::string projectKey, std::string_view text, std::size_t limit);

  bool Continue() override;
  std::unique_ptr<LocatorSearch> NarrowedTo(std::string_view text) const override;
  int Percent() const override;
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
  void Insert(Candidate candidate);
  void AdaptRun(std::chrono::steady_clock::duration taken);
  void FindPlaces();

  platform::Repository& repository_;
  std::string projectKey_;
  std::string text_;
  LocatorQuery query_;
  std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
  std::size_t limit_;
  std::vector<Candidate> candidates_;  // the best, the best first
  bool hasLeftOut_ = false;            // matches that were not among the best
  std::vector<LocatorEntry> best_;
  std::size_t kind_ = 0;  // that is searched
  std::int64_t nextID_ = 0;
  std::int64_t lastID_ = 0;  // of the kind's objects
  std::int64_t run_;         // IDs
};

}  // namespace qmrules::desktop
