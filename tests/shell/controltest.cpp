#include "shell/controltest.h"

#include <stdexcept>

#include "catalogue/gateway.h"
#include "platform/error.h"

namespace qmrules::shell {

using platform::widgets::TreeNode;

namespace {

class CountedDatabase final : public platform::Database {
 public:
  explicit CountedDatabase(int& open) : open_(open) { ++open_; }
  CountedDatabase(const CountedDatabase&) = delete;
  CountedDatabase& operator=(const CountedDatabase&) = delete;
  ~CountedDatabase() override { --open_; }
  std::unique_ptr<platform::Recordset> OpenRecordset(std::string_view) override { return nullptr; }
  void Execute(std::string_view) override {}
  std::int64_t RecordsAffected() const override { return 0; }

 private:
  int& open_;
};

}  // namespace

std::unique_ptr<platform::Database> OneDatabase::OpenDatabase(std::string_view path) {
  if (path != known) throw platform::Error("There is no database " + std::string(path) + ".");
  return std::make_unique<CountedDatabase>(open);
}

ControlTest::ControlTest() {
  store.FE().ProjectOptions().Document().loadXML(kProjectOptions);
  store.FE().GlobalOptions().Document().loadXML("<OPTIONS/>");
  store.AddCall(billing, fees, 1);
  store.AddCall(billing, taxes, 2);
  store.AddCall(billing, rebates, 3);
  store.AddCall(claims, homeless, 1);
  program = catalogue::MakeKey("COBOL", store.Add("COBOL", "FEE"));
  repository.object(program)->Link("BelongsTo", store.ProjectKey());
  workspace.AddComponent("QMSource", viewerComponent);
  workspace.SetViewer(viewer);
  workspace.SetObjectID(program);
  viewer.SetFiles({{"FEE.cbl", "COBOL"}});
}

ControlServices ControlTest::Services(platform::UserSettings& userSettings) {
  return {globals,
          StringTableFor(Language::English),
          files,
          registry,
          userSettings,
          store.Clock(),
          databases,
          tracing,
          dialogs,
          pointer,
          [this] { return repairIsDue; },
          [this] { ++repairsDone; }};
}

void ControlTest::Open() {
  Init();
  control.Show();
}

TreeNode& ControlTest::Node(const std::string& text) {
  for (TreeNode* node = tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
    if (node->Text() == text) return *node;
  }
  throw std::out_of_range("no node has the text " + text);
}

void ControlTest::OpenAll() {
  tvObjects.Expand(Node("Billing"));
  tvObjects.Expand(Node("Fees"));
  tvObjects.Expand(Node("Claims"));
}

void ControlTest::Click(const std::string& text) {
  tvObjects.EnsureVisible(Node(text));
  tvObjects.Click(Node(text));
}

std::string ControlTest::SelectedText() const {
  return tvObjects.SelectedNode() == nullptr ? "-" : tvObjects.SelectedNode()->Text();
}

std::string ControlTest::Tree() const {
  std::string text;
  for (const TreeNode* node = tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
    for (const TreeNode* around = node->Parent(); around != nullptr; around = around->Parent()) text += "  ";
    text += (node->Key().empty() ? "..." : node->Text()) + "\n";
  }
  return text;
}

std::string ControlTest::HostState(const std::string& key) const {
  const platform::HostCommand* const command = workspace.FindCommand("QMRulesIn", key);
  if (command == nullptr) throw std::out_of_range("the host has no command " + key);
  return std::string(command->enabled ? "enable" : "disable") + (command->visible ? "" : " hide") +
         (command->checked ? " check" : "");
}

std::string ControlTest::InitFailure() {
  try {
    Init();
    return "no failure";
  } catch (const platform::Error& error) {
    return error.what();
  }
}

}  // namespace qmrules::shell
