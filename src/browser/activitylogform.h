#pragma once

#include <cstdint>

#include "platform/dialogs.h"
#include "platform/event.h"
#include "platform/repository.h"
#include "platform/tesselglobals.h"
#include "platform/widgets/form.h"
#include "platform/widgets/treenode.h"
#include "shell/messages.h"

namespace qmrules::platform::widgets {
class ListView;
}

namespace qmrules::browser {

// `frmActivityLog`: the records of a rule's activity log in the list `lvLog`.
class ActivityLogForm {
 public:
  // All three outlive this.
  ActivityLogForm(platform::Dialogs& dialogs, const shell::StringTable& texts, const platform::TesselGlobals& globals);
  ActivityLogForm(const ActivityLogForm&) = delete;
  ActivityLogForm& operator=(const ActivityLogForm&) = delete;

  // The command `ActivityLog`: shows the log of the node's rule. Does nothing for another node and for nullptr.
  void ShowLogOf(const platform::widgets::TreeNode* node, platform::Repository& repository);

  // Shows the records of a rule of any project until the user closes the form. A rule without records gets a message in
  // its place. Throws Error, with nothing shown, when the repository fails.
  void ShowRuleLog(platform::Repository& repository, std::int32_t ruleID);

 private:
  platform::Dialogs& dialogs_;
  const shell::StringTable& texts_;
  const platform::TesselGlobals& globals_;
  platform::widgets::Form frmActivityLog_;
  platform::widgets::ListView& lvLog_;
  platform::Subscription closing_;
};

}  // namespace qmrules::browser
