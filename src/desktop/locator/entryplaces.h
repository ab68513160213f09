#pragma once

#include <string>
#include <vector>

#include "desktop/locator/locatorsource.h"
#include "platform/repository.h"

namespace qmrules::desktop {

// Completes entries of rule sets and rules with where they stand in the project, by at most two fetches: the place for
// the reader, as "Function / Rule set (+2)" where two more functions trigger the rule set, and the IDs for a jump.
// Entries of other kinds stay as they are.
void PutPlaces(platform::Repository& repository, const std::string& projectKey,
               const std::vector<LocatorEntry*>& entries);

}  // namespace qmrules::desktop
