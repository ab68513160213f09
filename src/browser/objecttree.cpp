#include "browser/objecttree.h"

#include <optional>
#include <string_view>

#include "browser/labelnumbers.h"
#include "browser/nodes.h"
#include "browser/rulenodes.h"
#include "browser/treeload.h"
#include "catalogue/nodekeys.h"
#include "platform/widgets/listview.h"
#include "platform/widgets/textbox.h"
#include "platform/widgets/treenodehandle.h"
#include "shell/text.h"

namespace qmrules::browser {

using platform::BusyCursor;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;

namespace {

constexpr int kObjectsLoading = 594;

// Commands that a tree with nodes makes available.
constexpr std::string_view kTreeCommands[] = {"Find",      "PreviousSelected", "NextSelected", "Selected",
                                              "SelectAll", "UnselectAll",      "Changer"};

}  // namespace

ObjectTree::ObjectTree(const BrowserServices& services, SelectedKeys& selectedKeys)
    : services_(services),
      selectedKeys_(selectedKeys),
      tree_(services.widgets.tvObjects),
      faces_(services),
      index_(tree_),
      expanding_(tree_.OnExpanding.Subscribe([this](TreeNode& node) { Expanding(node); })) {}

void ObjectTree::LoadTree() {
  const bool keepsNodes = faces_.IsChecked("Selected");
  const bool showsProgress = !services_.host.IsLoading();
  TreeLoad load(services_, keepsNodes);
  std::optional<platform::ProgressDisplay> display;
  if (showsProgress) {
    display.emplace(services_.progress,
                    shell::Subst(services_.texts.Text(kObjectsLoading), {services_.globals.externalName}), load.Steps(),
                    false);
  }
  load.Read(showsProgress);
  services_.host.UpdateCommands(nullptr);
  const std::string remembered = tree_.SelectedNode() == nullptr ? "" : tree_.SelectedNode()->Key();
  load.Apply();
  foreignSets_ = load.TakeForeignSets();
  ClearLists();
  if (tree_.Count() > 0) {
    for (const std::string_view command : kTreeCommands) faces_.SetEnabled(command, true);
    services_.host.SetHostItem("Selected", "uncheck");
  }
  TreeNode* shown = tree_.Find(remembered);
  if (shown == nullptr && !keepsNodes) shown = tree_.First();
  if (shown != nullptr) SelectAndShow(*shown);
}

void ObjectTree::ClearLists() {
  const ControlWidgets& widgets = services_.widgets;
  for (auto* list : {&widgets.lvContent, &widgets.lvTriggers, &widgets.lvIOElems, &widgets.lvConditions}) list->Clear();
  widgets.txtTriggers.SetText(services_.texts.Text(kNoTrigger));
}

void ObjectTree::SelectAndShow(TreeNode& node) {
  tree_.SetSelectedNode(&node);
  services_.host.ShowNode(&node);
}

void ObjectTree::Expanding(TreeNode& node) {
  const TreeNodeHandle expanding(&node);
  SelectAndShow(node);
  if (expanding.Get() == nullptr || !IsRuleSet(node) || !HasOnlyPlaceholder(node)) return;
  const BusyCursor busy(services_.pointer);
  LoadRules({&node}, [this](const TreeNode& set, const std::string& ruleKey) {
    return set.Checked() || selectedKeys_.Contains(ruleKey);
  });
}

void ObjectTree::LoadRules(const std::vector<TreeNode*>& sets, const CheckOfRule& isChecked) {
  const RulesOfSets rules = ReadRules(services_.FE, sets);
  for (TreeNode* const set : sets) {
    TreeNode* const placeholder = set->FirstChild();
    AddRules(tree_, *set, rules, [&](const std::string& ruleKey) { return isChecked(*set, ruleKey); });
    tree_.Remove(*placeholder);
  }
}

void ObjectTree::CheckChanged(TreeNode& node) {
  const BusyCursor busy(services_.pointer);
  const TreeNode* const behind = node.NextBehind();
  for (TreeNode* below = &node; below != behind; below = below->NextInOrder()) {
    below->SetChecked(node.Checked());
    if (!node.Checked()) selectedKeys_.Remove(below->Key());
  }
}

bool ObjectTree::IsForeign(std::int32_t setID) const {
  return foreignSets_.Contains(catalogue::RuleSetRowKey(setID));
}

}  // namespace qmrules::browser
