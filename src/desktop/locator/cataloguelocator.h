#pragma once

#include <string>

#include "desktop/locator/locatorsource.h"
#include "platform/repository.h"

namespace qmrules::desktop {

// The locator's source over the catalogue: the business functions, rule sets, rules and programs of one project.
//
// Functions, rule sets and programs are few and are searched whole. Rules are searched in runs of IDs, each run one
// fetch, so that no step takes long however many there are and however seldom the text occurs.
//
// An object is offered once. A rule set that several functions trigger, and each of its rules, is offered at its first
// place in the catalogue's reading order; the place's text tells how many more there are.
class CatalogueLocator final : public LocatorSource {
 public:
  // `repository` outlives this.
  CatalogueLocator(platform::Repository& repository, std::string projectKey);

  std::unique_ptr<LocatorSearch> Find(std::string_view text, std::size_t limit) override;

 private:
  platform::Repository& repository_;
  std::string projectKey_;
};

}  // namespace qmrules::desktop
