#include "desktop/locator/cataloguelocator.h"

#include <utility>

#include "desktop/locator/cataloguesearch.h"

namespace qmrules::desktop {

CatalogueLocator::CatalogueLocator(platform::Repository& repository, std::string projectKey)
    : repository_(repository), projectKey_(std::move(projectKey)) {}

std::unique_ptr<LocatorSearch> CatalogueLocator::Find(std::string_view text, std::size_t limit) {
  return std::make_unique<CatalogueSearch>(repository_, projectKey_, text, limit);
}

}  // namespace qmrules::desktop
