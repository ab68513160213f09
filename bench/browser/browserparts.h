#pragma once

#include <string>
#include <string_view>

#include "browser/browserhost.h"
#include "browser/browserservices.h"
#include "browser/detailpanes.h"
#include "browser/objecttree.h"
#include "browser/selectedkeys.h"
#include "browser/selectedonly.h"
#include "browser/selection.h"
#include "platform/memoryworkspace.h"
#include "platform/pointer.h"
#include "platform/progress.h"
#include "platform/scripteddialogs.h"
#include "shell/controlsettings.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::bench {

// The parts of the control that a selection is made of, put together as the control does: bulk commands ask the
// selection from within, and a search fills the selected keys from within, so that neither is reached through the
// control.
class BrowserParts final : private browser::BrowserHost, private platform::CommandSink {
 public:
  // The host outlives the parts.
  explicit BrowserParts(workbench::EmbeddedHost& host);

  platform::widgets::TreeView& Tree() { return widgets_.tvObjects; }
  browser::ObjectTree& Objects() { return objects_; }
  browser::SelectedKeys& Keys() { return keys_; }
  browser::Selection& Selection() { return selection_; }
  browser::SelectedOnly& SelectedOnly() { return selectedOnly_; }

 private:
  void UpdateCommands(platform::widgets::TreeNode* node) override { panes_.ShowPanesFor(node); }
  void ShowNode(platform::widgets::TreeNode* node) override { panes_.ShowNode(node); }
  platform::widgets::TreeNode* CurrentNode() const override { return panes_.CurrentNode(); }
  std::string CurrentKey() const override { return panes_.CurrentKey(); }
  void ReplaceCurrentNode(platform::widgets::TreeNode& node) override { panes_.ReplaceCurrentNode(node); }
  void SetHostItem(std::string_view command, std::string_view state) override;
  bool IsLoading() const override { return false; }
  void OpenPopup() override {}
  void RefreshEmphasis() override {}
  void RecordFailure(std::string_view text) override;

  void Run(std::string_view key) override;

  const shell::StringTable& texts_ = shell::StringTableFor(shell::Language::English);
  platform::SilentProgress progress_;
  platform::ScriptedDialogs dialogs_;
  platform::MemoryPointer pointer_;
  browser::ControlWidgets widgets_{texts_};
  platform::MemoryWorkspace workspace_;
  shell::RuleSchema schema_;
  browser::BrowserServices services_;
  browser::SelectedKeys keys_;
  browser::ObjectTree objects_;
  browser::DetailPanes panes_;
  browser::Selection selection_;
  browser::SelectedOnly selectedOnly_;
};

}  // namespace qmrules::bench
