#pragma once

#include <string>
#include <vector>

#include "cli/output.h"
#include "validation/validationrun.h"

// What a validation found, in the forms that pipelines and scripts read.
namespace qmrules::cli {

// The findings to be told, which bear the names of their rules, in the order in which they are told.
using Findings = std::vector<const validation::RuleFinding*>;

// "unchanged", "in place", "no segment", "moved", "ambiguous", "not found", "rows disagree", "file missing", "changed".
[[nodiscard]] std::string VerdictName(validation::Verdict verdict);

// What became of the text, in one line without the verdict: "now 12-15", "near 40-43, 7 characters off"; "" when there
// is nothing to say.
[[nodiscard]] std::string PlaceText(const validation::RuleFinding& finding);

[[nodiscard]] Json ToJson(const validation::RuleFinding& finding);

// One test case for each rule, failed for each whose text does not stand at its rows, as JUnit's XML.
[[nodiscard]] std::string JUnitText(const Findings& findings);

// One result for each rule whose text does not stand at its rows, as SARIF 2.1.0. `version`: of this product.
[[nodiscard]] std::string SarifText(const Findings& findings, const std::string& version);

}  // namespace qmrules::cli
