#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "browser/watchedrepository.h"
#include "platform/memorysourceviewer.h"
#include "platform/memoryworkspace.h"
#include "platform/recordingprogress.h"
#include "platform/scripteddialogs.h"
#include "platform/sourceviewercomponent.h"
#include "shell/qmrules.h"
#include "support/teststore.h"

namespace qmrules::shell {

// A schema document with two attributes of the site's own, and one of the product's.
inline constexpr const char* kSiteSchema = R"(<repstry><entities><entity name="RULE"><entityattrs>
  <entityattr name="Status" type="CHAR" length="20" system="false" description="Rule Status" default="new">
    <const value="new"/><const value="approved"/>
  </entityattr>
  <entityattr name="Remark" type="LONGTEXT" system="false" description="Remark"/>
  <entityattr name="Origin" type="CHAR" length="9" system="true" description="Origin"/>
</entityattrs></entity></entities></repstry>)";

inline constexpr const char* kProjectOptions = R"(<OPTIONS><CASE NAME="Ferrowood"><LIST NAME="FW"><CASE NAME="CRD">
  <LIST NAME="CRDOptions"><CASE NAME="CRDConfig">
    <TEXT NAME="UnassignedBFName" VALUE="Homeless Function"/><TEXT NAME="UnassignedBFDescr" VALUE="Its rules."/>
    <TEXT NAME="UnassignedRSName" VALUE="Homeless Rules"/><TEXT NAME="UnassignedRSDescr" VALUE="No home."/>
  </CASE></LIST></CASE></LIST></CASE></OPTIONS>)";

inline constexpr const char* kGlobalOptions = R"(<OPTIONS><CASE NAME="Methods"><LIST NAME="Methods">
  <CASE NAME="Quillglass"><LIST NAME="Components"><CASE NAME="QMGlossary"/></LIST></CASE></LIST></CASE></OPTIONS>)";

// Opens no database but the one that it was given the path of.
class OneDatabase final : public platform::DatabaseEngine {
 public:
  std::unique_ptr<platform::Database> OpenDatabase(std::string_view path) override;
  std::string known;
  int open = 0;
};

class TracingRecorder final : public platform::TracingLibrary {
 public:
  bool LoadProgram(const Program&, std::string&) override { return false; }
  void UnloadProgram(std::string_view name) override { unloaded.emplace_back(name); }
  std::int32_t ExpandNode(std::string_view, std::string_view, std::string_view, std::string&) override { return 0; }
  std::optional<std::string> GetExpandNodeResult() override { return std::nullopt; }

  std::vector<std::string> unloaded;
};

// The whole control over a store and a workspace without windows, before its Init. Its catalogue:
//
//   Billing   Fees (Base fee, Late fee, Last fee), Taxes, Rebates
//   Claims    Homeless Function
//
// where the last one is a rule set that bears the name of the function for rules without a home. The program FEE with
// the file FEE.cbl is on view.
class ControlTest : public testing::Test {
 protected:
  ControlTest();

  ControlServices Services(platform::UserSettings& userSettings);
  void Init() { control.Init(workspace, "QMRulesIn", "Business Rules"); }
  // Init and Show.
  void Open();

  platform::widgets::TreeNode& Node(const std::string& text);
  // Clicks the node after opening what is around it.
  void Click(const std::string& text);
  void OpenAll();
  std::string SelectedText() const;
  // The texts of the tree, each with two blanks for each level.
  std::string Tree() const;

  // What the host shows of a command: "enable" or "disable", then "hide" and "check" where they hold.
  std::string HostState(const std::string& key) const;
  platform::Value Request(const std::string& key) { return workspace.RequestMethod("QMRulesIn", key); }
  // The next dialog is the message box with this text.
  void ExpectMessage(const std::string& text) { dialogs.ExpectMessage(platform::MessageAnswer::Ok, text); }
  void ExpectNotAvailable() { ExpectMessage("The action is not available in this context."); }
  // The text of the failure; "no failure".
  std::string InitFailure();

  static std::vector<std::string> Items(const platform::KeyedCollection<std::string>& collection) {
    return {collection.begin(), collection.end()};
  }

  test::TestStore store{kSiteSchema};
  browser::WatchedFrontEnd frontEnd{store.FE()};
  browser::Watch& watch = frontEnd.repository.watch;
  platform::Repository& repository = store.Repository();
  platform::TesselGlobals globals;
  platform::DiskFileSystem files;
  platform::MemoryRegistry registry;
  platform::MemorySettings settings;
  OneDatabase databases;
  TracingRecorder tracing;
  platform::RecordingProgress progress;
  platform::ScriptedDialogs dialogs;
  platform::MemoryPointer pointer;
  platform::MemorySourceViewer viewer;
  platform::SourceViewerComponent viewerComponent{viewer};
  platform::MemoryWorkspace workspace{frontEnd, progress};
  bool repairIsDue = false;
  int repairsDone = 0;
  QMRules control{Services(settings)};
  browser::ControlWidgets& widgets = control.Widgets();
  platform::widgets::TreeView& tvObjects = widgets.tvObjects;

  std::int32_t billing = store.AddFunction("Billing");
  std::int32_t claims = store.AddFunction("Claims");
  std::int32_t fees = store.AddRuleSet("Fees");
  std::int32_t taxes = store.AddRuleSet("Taxes");
  std::int32_t rebates = store.AddRuleSet("Rebates");
  std::int32_t homeless = store.AddRuleSet("Homeless Function");
  std::int32_t baseFee = store.AddRule(fees, "Base fee", 1);
  std::int32_t lateFee = store.AddRule(fees, "Late fee", 2);
  std::int32_t lastFee = store.AddRule(fees, "Last fee", 3);
  std::string program;
};

}  // namespace qmrules::shell
