#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/frontend.h"
#include "platform/repository.h"
#include "shell/messages.h"

// The activity log of a rule: one record for each change, written once and never edited.
namespace qmrules::catalogue {

// Writes one record on the rule: the present moment, the front end's user, the text, and the rule's `SID`. Throws Error
// when the store refuses; no record is left behind then. The change that the record tells of stands already.
void AddActivity(platform::FrontEnd& frontEnd, const platform::Clock& clock, std::int32_t ruleID,
                 std::string_view text);

// The text of a record that tells of a new attribute value: the attribute's caption and the value, of which at most 255
// characters, with "..." behind them when there are more.
[[nodiscard]] std::string ChangedActivity(const shell::StringTable& texts, std::string_view caption,
                                          std::string_view value);

struct RuleLogRow {
  std::string Activity;
  std::string UserName;
  std::string When;
  friend bool operator==(const RuleLogRow&, const RuleLogRow&) = default;
};

// What the activity log of a rule shows.
struct RuleLog {
  std::string caption;           // the window's title, with the rule's name; "" without rows
  std::vector<RuleLogRow> rows;  // in the order of the fetch; none when nothing is logged
};

// Reads the records of a rule of any project.
[[nodiscard]] RuleLog ReadRuleLog(platform::Repository& repository, const shell::StringTable& texts,
                                  std::int32_t ruleID);

}  // namespace qmrules::catalogue
