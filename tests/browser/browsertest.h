#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "browser/browserservices.h"
#include "browser/detailpanes.h"
#include "browser/objecttree.h"
#include "browser/repositorynotifications.h"
#include "browser/selectedkeys.h"
#include "browser/selectedonly.h"
#include "browser/selection.h"
#include "browser/treeinput.h"
#include "browser/treejumps.h"
#include "browser/watchedrepository.h"
#include "platform/memorysourceviewer.h"
#include "platform/memoryworkspace.h"
#include "platform/recordingprogress.h"
#include "platform/scripteddialogs.h"
#include "platform/sourceviewercomponent.h"
#include "platform/widgets/listview.h"
#include "platform/widgets/menu.h"
#include "platform/widgets/richtextbox.h"
#include "platform/widgets/toolbar.h"
#include "platform/widgets/treenodehandle.h"
#include "platform/widgets/treeview.h"
#include "support/teststore.h"

namespace qmrules::browser {

// The control around the browser: it keeps what it is told, and its panes are as empty as a new node leaves them,
// unless it has panes.
class RecordingHost final : public BrowserHost {
 public:
  void UpdateCommands(platform::widgets::TreeNode* node) override;
  void ShowNode(platform::widgets::TreeNode* node) override;
  platform::widgets::TreeNode* CurrentNode() const override {
    return panes == nullptr ? current_.Get() : panes->CurrentNode();
  }
  std::string CurrentKey() const override { return panes == nullptr ? currentKey_ : panes->CurrentKey(); }
  void ReplaceCurrentNode(platform::widgets::TreeNode& node) override {
    current_ = platform::widgets::TreeNodeHandle(&node);
    if (panes != nullptr) panes->ReplaceCurrentNode(node);
  }
  void SetHostItem(std::string_view command, std::string_view state) override {
    hostItems.push_back(std::string(command) + " " + std::string(state));
  }
  bool IsLoading() const override { return isLoading; }
  void OpenPopup() override { ++popups; }
  void RefreshEmphasis() override { ++refreshes; }
  void RecordFailure(std::string_view text) override { failures.emplace_back(text); }

  std::vector<std::string> updated;    // texts of the nodes, "-" for none
  std::vector<std::string> shown;      // the same
  std::vector<std::string> hostItems;  // command, " ", state
  std::vector<std::string> failures;
  bool isLoading = false;
  int popups = 0;
  int refreshes = 0;
  std::function<void()> onShow;  // what happens while a node is shown
  std::vector<platform::widgets::ListView*> emptied;
  DetailPanes* panes = nullptr;  // shows the nodes, when there is one

 private:
  platform::widgets::TreeNodeHandle current_;
  std::string currentKey_;
};

class RecordingCommands final : public platform::CommandSink {
 public:
  void Run(std::string_view key) override { run.emplace_back(key); }
  std::vector<std::string> run;
};

// The browser with a store, its widgets as the control makes them, and a control that records.
class BrowserTest : public testing::Test {
 protected:
  // As for a TestStore.
  explicit BrowserTest(const std::string& extension = "", workbench::repository::ConnectionFactory connect = {});

  platform::widgets::TreeNode& Node(const std::string& text);
  // The tree, one line for each node: two blanks for each level, the text, " #" and the tag where there is one, " [x]"
  // for a checked one. A placeholder is "...".
  std::string Tree() const { return TreeText(tvObjects); }
  static std::string TreeText(const platform::widgets::TreeView& tree);
  std::string SelectedText() const;
  // The shown rows, a line each: the cells in the order of the columns, with " | " between them.
  static std::string Rows(const platform::widgets::ListView& list);
  // The states of a command on menu item, tool bar and in the host as last told.
  bool IsEnabled(const std::string& menuItem) { return mnuPopup.Item(menuItem).Enabled(); }

  // Objects made as the dialogs make them, with the number that follows `after` (0 for the end).
  std::int32_t CreateSet(std::int32_t functionID, const std::string& name, std::int32_t afterCallID = 0);
  std::int32_t Trigger(std::int32_t functionID, std::int32_t setID, std::int32_t afterCallID = 0);
  std::int32_t CreateRule(std::int32_t setID, const std::string& name, std::int32_t afterRuleID = 0);
  std::int32_t AddElsewhere(const std::string& entity, const std::string& name);

  test::TestStore store;
  WatchedFrontEnd frontEnd{store.FE()};
  platform::Repository& repository = store.Repository();
  Watch& watch = frontEnd.repository.watch;
  const shell::StringTable& texts = shell::StringTableFor(shell::Language::English);
  platform::TesselGlobals globals;
  platform::RecordingProgress progress;
  platform::MemoryPointer pointer;
  RecordingHost host;
  RecordingCommands commands;

  ControlWidgets widgets{texts};
  platform::widgets::TreeView& tvObjects = widgets.tvObjects;
  platform::widgets::ListView& lvContent = widgets.lvContent;
  platform::widgets::ListView& lvTriggers = widgets.lvTriggers;
  platform::widgets::ListView& lvIOElems = widgets.lvIOElems;
  platform::widgets::ListView& lvConditions = widgets.lvConditions;
  platform::widgets::TextBox& txtTriggers = widgets.txtTriggers;
  platform::widgets::RichTextBox& rtbDescription = widgets.rtbDescription;
  platform::widgets::RichTextBox& rtbBusiness = widgets.rtbBusiness;
  platform::widgets::Menu& mnuPopup = widgets.mnuPopup;
  platform::widgets::ToolBar& tbToolbar = widgets.tbToolbar;

  platform::MemorySourceViewer viewer;
  platform::SourceViewerComponent viewerComponent{viewer};
  platform::MemoryWorkspace workspace{frontEnd, progress};
  platform::ScriptedDialogs dialogs;
  BrowserServices services{workspace, frontEnd, progress, dialogs, pointer, store.Clock(),
                           texts,     globals,  commands, host,    widgets};
  SelectedKeys selectedKeys;
  ObjectTree objects{services, selectedKeys};
  SelectedOnly selectedOnly{services, objects, selectedKeys};
  Selection selection{services, objects, selectedKeys};
  TreeInput input{services, objects};
  TreeJumps jumps{services, objects, selectedOnly};
  RepositoryNotifications notifications{services, objects, selectedOnly};

 private:
  int calls_ = 0;
};

}  // namespace qmrules::browser
