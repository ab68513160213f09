#include "browser/treejumps.h"

#include <fmt/format.h>

#include <charconv>

#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "platform/widgets/textbox.h"
#include "platform/widgets/treenodehandle.h"
#include "shell/text.h"

namespace qmrules::browser {

using catalogue::IDField;
using platform::BusyCursor;
using platform::Subscription;
using platform::widgets::Color;
using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::ListRow;
using platform::widgets::ListView;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;

namespace {

// The ID in a text that may hold none; 0 then.
std::int32_t IDIn(std::string_view text) {
  std::int32_t id = 0;
  std::from_chars(text.data(), text.data() + text.size(), id);
  return id;
}

// A node that is to be reached, and the one whose opening brings it into the tree.
struct Goal {
  std::string key;
  std::string aroundKey;
};

// The first place of the rule that the tree can show; empty keys when there is none.
Goal PlaceOfRule(const BrowserServices& services, std::int32_t ruleID) {
  const auto fetch = catalogue::NewQuery(services.Repository());
  const auto rule = fetch->AddObject(false, catalogue::kRule, "ID:RuleID", fmt::format("ID={}", ruleID));
  const auto has = fetch->AddRelation("Has", false, "", rule);
  const auto set = fetch->AddObject(false, catalogue::kRuleSet, "ID:SetID", {}, has);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "ID:FuncID", {}, triggers));
  const auto& tree = services.widgets.tvObjects;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const std::int32_t functionID = IDField(fetch->Row(), "FuncID");
    Goal goal{catalogue::RuleNodeKey(functionID, IDField(fetch->Row(), "RuleID")),
              catalogue::RuleSetNodeKey(functionID, IDField(fetch->Row(), "SetID"))};
    if (tree.Find(goal.key) != nullptr || tree.Find(goal.aroundKey) != nullptr) return goal;
  }
  return {};
}

}  // namespace

TreeJumps::TreeJumps(const BrowserServices& services, ObjectTree& tree, SelectedOnly& selectedOnly)
    : services_(services),
      objects_(tree),
      selectedOnly_(selectedOnly),
      tree_(services.widgets.tvObjects),
      treeDoubleClick_(tree_.OnDoubleClick.Subscribe([this](TreeNode&) { ToTriggered(); })),
      contentDoubleClick_(FollowRows(services.widgets.lvContent, &TreeJumps::ToContent)),
      contentEnter_(FollowEnter(services.widgets.lvContent, &TreeJumps::ToContent)),
      triggersDoubleClick_(FollowRows(services.widgets.lvTriggers, &TreeJumps::ToTrigger)),
      triggersEnter_(FollowEnter(services.widgets.lvTriggers, &TreeJumps::ToTrigger)) {}

Subscription TreeJumps::FollowRows(ListView& list, Jump jump) {
  return list.OnDoubleClick.Subscribe([this, jump](const ListRow& row) { (this->*jump)(row); });
}

Subscription TreeJumps::FollowEnter(ListView& list, Jump jump) {
  return list.OnKeyDown.Subscribe([this, jump, &list](KeyPress& press) {
    if (press.key != Key::Enter || list.CurrentRow() == nullptr) return;
    press.handled = true;
    (this->*jump)(*list.CurrentRow());
  });
}

void TreeJumps::LeaveSelectedOnly() {
  if (selectedOnly_.IsOn()) selectedOnly_.TurnOff();
}

void TreeJumps::ToTriggered() {
  const TreeNode* const rule = tree_.SelectedNode();
  if (rule == nullptr || !IsRule(*rule)) return;
  const std::int32_t setID = IDIn(services_.widgets.txtTriggers.Tag());
  if (setID == 0 || objects_.IsForeign(setID)) return;
  const BusyCursor busy(services_.pointer);
  LeaveSelectedOnly();
  const TreeNode* const set = tree_.FindLike(shell::LikePattern(catalogue::RuleSetOccurrences(setID)));
  if (set != nullptr) Reach(std::string(set->Key()), set->Parent()->Key());
}

// The row goes when another node is shown, so all that is needed of it is taken first.
void TreeJumps::ToContent(const ListRow& row) {
  if (row.ForeColor() == Color::Grey) return;
  const std::string rowKey{std::string_view(row.Key())};
  const TreeNodeHandle current(services_.host.CurrentNode());
  if (current.Get() == nullptr) return;
  const BusyCursor busy(services_.pointer);
  LeaveSelectedOnly();
  const TreeNode* const around = current.Get();
  if (around == nullptr) return;
  const TreeNode& function = around->Parent() == nullptr ? *around : *around->Parent();
  Reach(function.Key() + rowKey, around->Key());
}

void TreeJumps::ToTrigger(const ListRow& row) {
  if (row.ForeColor() == Color::Grey || row.Key().empty()) return;
  const std::int32_t ruleID = IDIn(std::string_view(row.Key()).substr(1));
  const BusyCursor busy(services_.pointer);
  LeaveSelectedOnly();
  const Goal goal = PlaceOfRule(services_, ruleID);
  if (!goal.key.empty()) Reach(goal.key, goal.aroundKey);
}

// The keys are looked up at each step: showing a node may change the tree.
void TreeJumps::Reach(const std::string& key, const std::string& aroundKey) {
  if (TreeNode* const around = tree_.Find(aroundKey)) around->SetExpanded(true);
  if (TreeNode* const goal = tree_.Find(key)) tree_.EnsureVisible(*goal);
  if (TreeNode* const goal = tree_.Find(key)) objects_.SelectAndShow(*goal);
}

}  // namespace qmrules::browser
