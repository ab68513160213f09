#include "browser/activitylogform.h"

#include "browser/nodes.h"
#include "catalogue/activitylog.h"
#include "platform/widgets/button.h"
#include "platform/widgets/listview.h"

namespace qmrules::browser {

using platform::widgets::Button;
using platform::widgets::ListRow;
using platform::widgets::ListView;

namespace {

constexpr int kOK = 184;
constexpr int kActivity = 186;
constexpr int kWhoChanged = 187;
constexpr int kWhenChanged = 188;
constexpr int kNoLoggedActivity = 501;

}  // namespace

ActivityLogForm::ActivityLogForm(platform::Dialogs& dialogs, const shell::StringTable& texts,
                                 const platform::TesselGlobals& globals)
    : dialogs_(dialogs),
      texts_(texts),
      globals_(globals),
      frmActivityLog_("frmActivityLog"),
      lvLog_(frmActivityLog_.Add<ListView>("lvLog")) {
  lvLog_.AddColumn("Activity", texts_.Text(kActivity));
  lvLog_.AddColumn("UserName", texts_.Text(kWhoChanged));
  lvLog_.AddColumn("When", texts_.Text(kWhenChanged));
  auto& cmdOK = frmActivityLog_.Add<Button>("cmdOK");
  cmdOK.SetCaption(texts_.Text(kOK));
  closing_ = cmdOK.OnClick.Subscribe([this] { frmActivityLog_.Hide(); });
  frmActivityLog_.SetDefaultButton(&cmdOK);
  frmActivityLog_.SetCancelButton(&cmdOK);
}

void ActivityLogForm::ShowLogOf(const platform::widgets::TreeNode* node, platform::Repository& repository) {
  if (node != nullptr && IsRule(*node)) ShowRuleLog(repository, NodeID(*node));
}

void ActivityLogForm::ShowRuleLog(platform::Repository& repository, std::int32_t ruleID) {
  lvLog_.Clear();
  const catalogue::RuleLog log = catalogue::ReadRuleLog(repository, texts_, ruleID);
  if (log.rows.empty()) {
    dialogs_.MessageBox(texts_.Text(kNoLoggedActivity), globals_.externalName, platform::MessageStyle::Information);
    return;
  }
  frmActivityLog_.SetCaption(log.caption);
  for (const auto& record : log.rows) {
    ListRow& row = *lvLog_.Add("", record.Activity);
    row.SetSubItem("UserName", record.UserName);
    row.SetSubItem("When", record.When);
  }
  frmActivityLog_.Show(dialogs_);
}

}  // namespace qmrules::browser
