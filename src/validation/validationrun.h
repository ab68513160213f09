#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/keyedcollection.h"
#include "platform/progress.h"
#include "validation/comparisonmethod.h"
#include "validation/segmentrelocation.h"
#include "validation/validationmessage.h"
#include "validation/validationservices.h"

// The validation of rules: whether the text of each segment still stands at its rows, and what is done where it does
// not.
namespace qmrules::validation {

struct ValidationRequest {
  platform::KeyedCollection<std::string> ruleIDs;  // as texts
  std::string action;                              // see validationoptions.h
  bool collapseSpaces = false;
  bool writes = true;        // false: nothing is written, and the findings tell what would have been
  bool wantsPlaces = false;  // the findings tell all candidates, also where the action does not look for the text
  bool wantsHints =
      false;  // and the nearest place of a text that is nowhere, each at the cost of a walk through the file
  bool wantsTexts = false;  // the findings bear the rules' names and the texts that are compared
  ComparisonMethod method = kComparisonMethod;
};

enum class Verdict {
  Unchanged,     // the text stands at its rows
  InPlace,       // not exactly, but with other blanks or in other case: it was looked for and found there. A segment
                 // that was moved keeps its text without indentation and is found so ever after
  NoSegment,     // the rule has no text
  Moved,         // the text stands at one other place
  Ambiguous,     // at several: the nearest is taken
  NotFound,      // nowhere
  RowsDisagree,  // the stored text has more lines than the stored rows: it cannot be looked for
  FileMissing,   // the file cannot be read
  Changed,       // it does not stand at its rows; it was not looked for, or the rule has no text to look for
};
inline constexpr std::size_t kVerdicts = 9;

// Where a text like the segment's stands, as a hint for the reader; it is never written.
struct NearPlace {
  RowRange rows;
  std::int64_t distance = 0;  // characters to insert, delete or substitute
};

struct RuleFinding {
  std::int32_t ruleID = 0;
  std::string ruleName;  // with wantsTexts
  std::string fileName;
  RowRange rows;  // as they were stored
  Verdict verdict = Verdict::Unchanged;
  std::vector<RowRange> candidates;  // of a text that was found: all places, in the order of the index
  std::size_t chosen = 0;            // the one that is taken
  std::string text;                  // and the text for it
  std::string storedText;            // as it was before the run, with wantsTexts
  std::optional<NearPlace> near;     // NotFound, with wantsHints
};

// "12", or "12-15" for several rows.
[[nodiscard]] std::string RowsText(const RowRange& rows);

struct ValidationReport {
  ValidationCounts counts;
  std::string message;
  std::vector<RuleFinding> findings;  // in the order in which the rules were worked off
};

// Validates the rules and writes the results. Each file is read once, whatever the number of its rules. `progress` may
// be nullptr. Throws Error when the store fails; rules that are written by then stay so. A file that cannot be read is
// no failure.
ValidationReport ValidateRules(const ValidationServices& services, const ValidationRequest& request,
                               platform::Progress* progress);

// All rules that stand in a rule set of the project, by the action and the comparison that the project's options hold,
// without a question. `message` becomes what the user is told. Throws as ValidateRules does.
void BatchRuleValidation(const ValidationServices& services, std::string_view projectID, std::string& message);

}  // namespace qmrules::validation
