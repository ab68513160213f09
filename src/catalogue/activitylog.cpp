#include "catalogue/activitylog.h"

#include <fmt/format.h>

#include "catalogue/gateway.h"
#include "catalogue/uniquename.h"
#include "shell/text.h"

namespace qmrules::catalogue {

namespace {

constexpr std::size_t kLongestLoggedValue = 255;
constexpr int kChangedTo = 542;
constexpr int kCaption = 100;

}  // namespace

void AddActivity(platform::FrontEnd& frontEnd, const platform::Clock& clock, std::int32_t ruleID,
                 std::string_view text) {
  auto& repository = frontEnd.Repository();
  const auto rule = repository.object(MakeKey(kRule, ruleID));
  const auto transaction = repository.BeginTransaction();
  const auto record = repository.NewObject(kRuleLog, UniqueName());
  record->Edit();
  record->Attrs("When", clock.Now());
  record->Attrs("UserName", frontEnd.UserName());
  record->Attrs("Activity", text);
  record->Attrs("SID", rule->Attrs("SID"));
  record->Post();
  record->Link("Logs", rule->Key());
  transaction->Commit();
}

std::string ChangedActivity(const shell::StringTable& texts, std::string_view caption, std::string_view value) {
  return shell::Subst(texts.Text(kChangedTo), {caption, shell::CutWithEllipsis(value, kLongestLoggedValue)});
}

RuleLog ReadRuleLog(platform::Repository& repository, const shell::StringTable& texts, std::int32_t ruleID) {
  const auto fetch = NewQuery(repository);
  const auto record = fetch->AddObject(false, kRuleLog, "UserName,Activity,When");
  const auto loggedIn = fetch->AddRelation("LoggedIn", false, "", record);
  fetch->SetRoot(fetch->AddObject(false, kRule, "RuleName", fmt::format("ID={}", ruleID), loggedIn));

  RuleLog log;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    if (log.rows.empty()) {
      log.caption = shell::Subst(texts.Text(kCaption), {fmt::format(" {}", row.Item("RuleName").Text())});
    }
    log.rows.push_back({row.Item("Activity").Text(), row.Item("UserName").Text(), row.Item("When").Text()});
  }
  return log;
}

}  // namespace qmrules::catalogue
