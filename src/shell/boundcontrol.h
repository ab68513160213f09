#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "browser/activitylogform.h"
#include "browser/browserhost.h"
#include "browser/browserservices.h"
#include "browser/commandfaces.h"
#include "browser/detailpanes.h"
#include "browser/moveinsequence.h"
#include "browser/objecttree.h"
#include "browser/repositorynotifications.h"
#include "browser/selectedkeys.h"
#include "browser/selectedonly.h"
#include "browser/selection.h"
#include "browser/treeinput.h"
#include "browser/treejumps.h"
#include "browser/treemend.h"
#include "platform/commandsink.h"
#include "segments/emphasis.h"
#include "shell/commandavailability.h"
#include "shell/commandhandlers.h"
#include "shell/commandroads.h"
#include "shell/controlsettings.h"
#include "shell/popupmenu.h"
#include "shell/qmrules.h"
#include "shell/workspacenotifications.h"
#include "validation/rulevalidation.h"

namespace qmrules::shell {

// The control as long as it has a workspace: its parts, put together, each of which asks the others through here.
class BoundControl final : private browser::BrowserHost, private platform::CommandSink {
 public:
  // For widgets as they are without a workspace, which the destructor leaves behind so again. `services`, `failures`,
  // `onValidated` and the widgets outlive this. Throws Error when the attribute panel cannot be built.
  BoundControl(platform::Workspace& workspace, const ControlServices& services, const FailureReport& failures,
               browser::ControlWidgets& widgets, validation::ValidatedEvent& onValidated, RuleSchema schema);
  BoundControl(const BoundControl&) = delete;
  BoundControl& operator=(const BoundControl&) = delete;
  ~BoundControl() override;

  void Show();
  void Hide();
  void EnterFocus();
  bool IsShown() const { return visible_; }
  void MendFromStore(const platform::ForeignChanges& changes);
  // Writes what is pending in the panes. Throws Error when a change cannot be written, with the others written.
  void CommitEdits() { panes_.CommitAll(); }

  const RuleSchema& Schema() const { return schema_; }
  const std::string& HelpFile() const { return helpFile_; }
  const platform::Font& Font() const { return font_; }

 private:
  void Fill();
  void Sweep();
  void OfferGlossary();
  bool ShowsAnyOf(const std::vector<std::string>& objectKeys) const;

  void UpdateCommands(platform::widgets::TreeNode* node) override;
  void ShowNode(platform::widgets::TreeNode* node) override { panes_.ShowNode(node); }
  platform::widgets::TreeNode* CurrentNode() const override { return panes_.CurrentNode(); }
  std::string CurrentKey() const override { return panes_.CurrentKey(); }
  void ReplaceCurrentNode(platform::widgets::TreeNode& node) override { panes_.ReplaceCurrentNode(node); }
  void SetHostItem(std::string_view command, std::string_view state) override;
  bool IsLoading() const override { return loading_; }
  void OpenPopup() override { popup_.Open(); }
  void RefreshEmphasis() override { emphasis_.Refresh(); }
  void RecordFailure(std::string_view text) override { browser_.QMWS.ErrorRecord(text); }

  void Run(std::string_view key) override { handlers_.Run(key); }

  const ControlServices& services_;
  const FailureReport& failures_;
  RuleSchema schema_;
  std::string helpFile_;
  platform::Font font_;
  bool visible_ = false;
  bool loading_ = false;

  browser::BrowserServices browser_;
  browser::CommandFaces faces_;
  CommandAvailability availability_;
  browser::SelectedKeys selectedKeys_;
  browser::ObjectTree objects_;
  browser::DetailPanes panes_;
  browser::Selection selection_;
  browser::SelectedOnly selectedOnly_;
  browser::MoveInSequence moveInSequence_;
  browser::ActivityLogForm activityLog_;
  segments::Emphasis emphasis_;
  validation::RuleValidation validation_;
  PopupMenu popup_;
  CommandHandlers handlers_;
  CommandRoads roads_;
  browser::TreeInput treeInput_;
  browser::TreeJumps treeJumps_;
  browser::RepositoryNotifications repositoryNotifications_;
  browser::TreeMend treeMend_;
  WorkspaceNotifications workspaceNotifications_;
};

}  // namespace qmrules::shell
