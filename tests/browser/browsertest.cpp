#include "browser/browsertest.h"

#include <stdexcept>
#include <utility>

#include "browser/commandwidgets.h"
#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "catalogue/sequence.h"

namespace qmrules::browser {

using catalogue::MakeKey;
using platform::widgets::ListView;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;

namespace {

std::string TextOf(const TreeNode* node) {
  return node == nullptr ? "-" : node->Text();
}

}  // namespace

void RecordingHost::UpdateCommands(TreeNode* node) {
  updated.push_back(TextOf(node));
  if (panes != nullptr) panes->ShowPanesFor(node);
}

void RecordingHost::ShowNode(TreeNode* node) {
  shown.push_back(TextOf(node));
  if (panes != nullptr) {
    panes->ShowNode(node);
    return;
  }
  for (ListView* const list : emptied) list->Clear();
  if (node != nullptr) {
    current_ = TreeNodeHandle(node);
    currentKey_ = MakeKey(node->Image(), NodeID(*node));
  }
  if (onShow) std::exchange(onShow, nullptr)();
}

BrowserTest::BrowserTest(const std::string& extension, workbench::repository::ConnectionFactory connect)
    : store(extension, std::move(connect)) {
  globals.internalName = "QMRules";
  globals.externalName = "Business Rules";
  workspace.AddComponent("QMSource", viewerComponent);
  workspace.SetViewer(viewer);
  host.emptied = {&lvContent, &lvTriggers, &lvIOElems, &lvConditions};
  FillCommandWidgets(widgets, texts);
}

TreeNode& BrowserTest::Node(const std::string& text) {
  for (TreeNode* node = tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
    if (node->Text() == text) return *node;
  }
  throw std::out_of_range("no node has the text " + text);
}

std::string BrowserTest::TreeText(const platform::widgets::TreeView& tree) {
  std::string text;
  for (const TreeNode* node = tree.First(); node != nullptr; node = node->NextInOrder()) {
    for (const TreeNode* around = node->Parent(); around != nullptr; around = around->Parent()) text += "  ";
    text += node->Key().empty() ? "..." : node->Text();
    if (!node->Tag().empty()) text += " #" + node->Tag();
    if (node->Checked()) text += " [x]";
    text += "\n";
  }
  return text;
}

std::string BrowserTest::SelectedText() const {
  return TextOf(tvObjects.SelectedNode());
}

std::string BrowserTest::Rows(const ListView& list) {
  std::string text;
  for (std::size_t place = 0; place < list.Count(); ++place) {
    for (const auto& column : list.Columns()) {
      if (&column != &list.Columns().front()) text += " | ";
      text += list.Row(place).SubItem(column.key);
    }
    text += "\n";
  }
  return text;
}

std::int32_t BrowserTest::Trigger(std::int32_t functionID, std::int32_t setID, std::int32_t afterCallID) {
  const auto call = repository.NewObject("RULESETCALL", "newcall" + std::to_string(++calls_));
  const std::string function = MakeKey("BUSINESSFUNC", functionID);
  call->Edit();
  call->Attrs("SeqNo",
              catalogue::NextSeqNo(repository, {"BUSINESSFUNC", functionID, "Triggers", "RULESETCALL", afterCallID}));
  call->Post();
  call->Link("Refers", MakeKey("RULESET", setID));
  repository.object(function)->Link("Triggers", call->Key());
  return catalogue::SplitKey(call->Key()).id;
}

std::int32_t BrowserTest::CreateSet(std::int32_t functionID, const std::string& name, std::int32_t afterCallID) {
  const std::int32_t set = store.AddRuleSet(name);
  Trigger(functionID, set, afterCallID);
  return set;
}

std::int32_t BrowserTest::CreateRule(std::int32_t setID, const std::string& name, std::int32_t afterRuleID) {
  const auto number = catalogue::NextSeqNo(repository, {"RULESET", setID, "Has", "RULE", afterRuleID});
  return store.AddRule(setID, name, static_cast<int>(number));
}

std::int32_t BrowserTest::AddElsewhere(const std::string& entity, const std::string& name) {
  const auto id = store.Add(entity, name);
  repository.object(MakeKey(entity, id))->Link("BelongsTo", store.OtherProjectKey());
  return id;
}

}  // namespace qmrules::browser
