#pragma once

#include <QString>
#include <string>

#include "validation/findinglist.h"
#include "validation/findingplaces.h"

namespace qmrules::desktop {

// What the reader is told of a validation's findings, in the language of the desktop.

[[nodiscard]] validation::VerdictWords AllVerdictWords();
// In one sentence.
[[nodiscard]] QString VerdictMeaning(validation::Verdict verdict);
// The key of its picture.
[[nodiscard]] std::string VerdictIcon(validation::Verdict verdict);

// "5 rules: not found 1, moved 4", the verdicts that there are, by need.
[[nodiscard]] QString CountsText(const validation::FindingList& list);

// What stands above the two texts.
[[nodiscard]] QString StoredCaption(const validation::RuleFinding& finding);
[[nodiscard]] QString PlaceCaption(const validation::RuleFinding& finding, const validation::FindingPlace& place);

}  // namespace qmrules::desktop
