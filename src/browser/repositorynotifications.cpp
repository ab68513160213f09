#include "browser/repositorynotifications.h"

#include <fmt/format.h>

#include <utility>

#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "platform/error.h"
#include "platform/widgets/listview.h"
#include "platform/widgets/richtextbox.h"

namespace qmrules::browser {

using catalogue::IDField;
using platform::BusyCursor;
using platform::Error;
using platform::ObjectKey;
using platform::RelationDef;
using platform::widgets::ListRow;
using platform::widgets::ListView;
using platform::widgets::NewNode;
using platform::widgets::TreeNode;

namespace {

constexpr std::string_view kTriggersRuleSet = "BusinessFunctionTriggersRuleSet";
constexpr std::string_view kHasRule = "RuleSetHasRule";
constexpr std::string_view kHasRuleIO = "RuleHasRuleIO";
constexpr std::string_view kControlledByCond = "RuleIsControlledByCond";

std::string IDFilter(std::int32_t id) {
  return fmt::format("ID={}", id);
}

// The two ends of a relation, which come in either order.
struct Ends {
  std::int32_t fixed = 0;  // of the entity that was asked for
  std::int32_t other = 0;
};

Ends PutOnFixedSide(std::string_view entity, const std::string& fromKey, const std::string& toKey) {
  const ObjectKey from = catalogue::SplitKey(fromKey);
  const ObjectKey to = catalogue::SplitKey(toKey);
  return from.entity == entity ? Ends{from.id, to.id} : Ends{to.id, from.id};
}

void RemoveRow(ListView& list, std::int32_t id) {
  if (ListRow* const row = list.Find(catalogue::ElementRowKey(id))) list.Remove(*row);
}

}  // namespace

RepositoryNotifications::RepositoryNotifications(const BrowserServices& services, ObjectTree& tree,
                                                 SelectedOnly& selectedOnly)
    : services_(services), objects_(tree), selectedOnly_(selectedOnly), tree_(services.widgets.tvObjects) {
  auto& repository = services_.Repository();
  objectAdded_ = repository.OnObjectAdded([this](const std::string& key) { Repository_ObjectAdded(key); });
  objectDeleted_ = repository.OnObjectDeleted([this](const std::string& key) { Repository_ObjectDeleted(key); });
  linked_ = repository.OnLinked([this](const std::string& from, const std::string& to, const RelationDef& relation) {
    Repository_Linked(from, to, relation.Name());
  });
  unLinked_ =
      repository.OnUnLinked([this](const std::string& from, const std::string& to, const RelationDef& relation) {
        Repository_UnLinked(from, to, relation.Name());
      });
}

void RepositoryNotifications::Mend(const std::function<void()>& handler) {
  const BusyCursor busy(services_.pointer);
  try {
    handler();
  } catch (const Error& failure) {
    services_.host.RecordFailure(failure.what());
  }
}

void RepositoryNotifications::Repository_ObjectAdded(const std::string& objID) {
  if (services_.globals.eventsSilenced) return;
  Mend([&] {
    const ObjectKey object = catalogue::SplitKey(objID);
    if (object.entity != catalogue::kBusinessFunction) return;
    const auto fetch = catalogue::NewQuery(services_.Repository());
    fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "Name", IDFilter(object.id)));
    if (!fetch->Execute("")) tree_.Add(FunctionNode(object.id, fetch->Row().Item("Name").Text()));
  });
}

void RepositoryNotifications::Repository_ObjectDeleted(const std::string& objID) {
  Mend([&] {
    if (objID == services_.host.CurrentKey()) EmptyDescriptions();
    const ObjectKey object = catalogue::SplitKey(objID);
    if (object.entity == catalogue::kBusinessFunction) {
      if (TreeNode* const node = tree_.Find(catalogue::FunctionNodeKey(object.id))) tree_.Remove(*node);
    } else if (object.entity == catalogue::kRuleSet || object.entity == catalogue::kRule) {
      RemoveNodes(object);
    } else if (object.entity == catalogue::kRuleIO) {
      RemoveRow(services_.widgets.lvIOElems, object.id);
    } else if (object.entity == catalogue::kRuleCond) {
      RemoveRow(services_.widgets.lvConditions, object.id);
    }
  });
}

void RepositoryNotifications::Repository_Linked(const std::string& fromObjId, const std::string& toObjId,
                                                const std::string& relation) {
  if (services_.globals.eventsSilenced) return;
  Mend([&] {
    if (relation == kTriggersRuleSet) {
      const Ends ends = PutOnFixedSide(catalogue::kRuleSetCall, fromObjId, toObjId);
      AddRuleSet(ends.fixed, ends.other);
    } else if (relation == kHasRule) {
      const Ends ends = PutOnFixedSide(catalogue::kRule, fromObjId, toObjId);
      AddRule(ends.fixed, ends.other);
    } else if (relation == kHasRuleIO || relation == kControlledByCond) {
      const Ends ends = PutOnFixedSide(catalogue::kRule, fromObjId, toObjId);
      AddElement(relation == kHasRuleIO ? catalogue::kRuleIO : catalogue::kRuleCond, ends.other, ends.fixed);
    }
  });
}

void RepositoryNotifications::Repository_UnLinked(const std::string& fromObjId, const std::string& toObjId,
                                                  const std::string& relation) {
  Mend([&] {
    if (relation == kTriggersRuleSet) {
      const Ends ends = PutOnFixedSide(catalogue::kRuleSetCall, fromObjId, toObjId);
      RemoveRuleSet(ends.fixed, ends.other);
    } else if (relation == kHasRule) {
      const Ends ends = PutOnFixedSide(catalogue::kRule, fromObjId, toObjId);
      RemoveNodes({std::string(catalogue::kRule), ends.fixed});
    }
  });
}

// What the user leaves in the fields of an object that is gone must not be written.
void RepositoryNotifications::EmptyDescriptions() {
  for (auto* field : {&services_.widgets.rtbDescription, &services_.widgets.rtbBusiness}) {
    field->SetText("");
    field->SetTag("");
  }
}

void RepositoryNotifications::RemoveNodes(const ObjectKey& object) {
  for (TreeNode* const node : objects_.Index().Occurrences(object.entity, object.id)) tree_.Remove(*node);
}

void RepositoryNotifications::AddRuleSet(std::int32_t callID, std::int32_t functionID) {
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto rules = fetch->AddCount("Has", false, "Children");
  const auto set = fetch->AddObject(false, catalogue::kRuleSet, "Name,ID", {}, rules);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "SeqNo", IDFilter(callID), refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "", IDFilter(functionID), triggers));
  if (fetch->Execute("")) return;
  const auto& row = fetch->Row();
  NewNode content =
      RuleSetNode(functionID, IDField(row, "ID"), row.Item("Name").Text(), row.Item("SeqNo").Value().Integer());
  const bool hasRules = row.Item("Children").Value().Integer() > 0;
  fetch->Reset();

  TreeNode* const function = tree_.Find(catalogue::FunctionNodeKey(functionID));
  if (function == nullptr) {
    if (selectedOnly_.IsOn()) selectedOnly_.TurnOff();
    return;
  }
  content.checked = function->Checked();
  TreeNode* const added = Insert(*function, std::move(content));
  if (added != nullptr && hasRules) AddPlaceholder(tree_, *added, services_.texts);
}

void RepositoryNotifications::AddRule(std::int32_t ruleID, std::int32_t setID) {
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto rule = fetch->AddObject(false, catalogue::kRule, "RuleName,SeqNo", IDFilter(ruleID));
  const auto has = fetch->AddRelation("Has", false, "", rule);
  const auto set = fetch->AddObject(false, catalogue::kRuleSet, "", IDFilter(setID), has);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "ID", {}, triggers));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    const std::int32_t functionID = IDField(row, "ID");
    TreeNode* const node = tree_.Find(catalogue::RuleSetNodeKey(functionID, setID));
    if (node == nullptr) continue;
    AddRuleBelow(*node, RuleNode(functionID, ruleID, row.Item("RuleName").Text(), row.Item("SeqNo").Value().Integer()));
  }
}

// A rule set whose rules have been read takes the rule, also while it is closed; any other one shows that it has rules.
void RepositoryNotifications::AddRuleBelow(TreeNode& set, NewNode rule) {
  const bool isRead = set.FirstChild() == nullptr ? set.Expanded() : !HasPlaceholder(set);
  if (isRead) {
    rule.checked = set.Checked();
    Insert(set, std::move(rule));
  } else if (set.FirstChild() == nullptr) {
    AddPlaceholder(tree_, set, services_.texts);
  }
}

// While the view hides siblings, the numbers in the tree cannot tell which of them made room: they are read again.
TreeNode* RepositoryNotifications::Insert(TreeNode& parent, NewNode child) {
  if (selectedOnly_.IsOn() && IsFunction(parent)) ReadNumbersOfRuleSets(parent);
  if (selectedOnly_.IsOn() && IsRuleSet(parent)) ReadNumbersOfRules(parent);
  return InsertInSequence(tree_, parent, std::move(child));
}

// Downwards, so that of two calls on one rule set the first one's number stays.
void RepositoryNotifications::ReadNumbersOfRuleSets(TreeNode& function) {
  const std::int32_t functionID = NodeID(function);
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto set = fetch->AddObject(false, catalogue::kRuleSet, "ID");
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "<SeqNo", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "", IDFilter(functionID), triggers));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    TreeNode* const node = tree_.Find(catalogue::RuleSetNodeKey(functionID, IDField(fetch->Row(), "ID")));
    if (node != nullptr) SetSequence(*node, fetch->Row().Item("SeqNo").Value().Integer());
  }
}

void RepositoryNotifications::ReadNumbersOfRules(TreeNode& set) {
  const std::int32_t functionID = NodeID(*set.Parent());
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto rule = fetch->AddObject(false, catalogue::kRule, "ID,SeqNo");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRuleSet, "", IDFilter(NodeID(set)), has));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    TreeNode* const node = tree_.Find(catalogue::RuleNodeKey(functionID, IDField(fetch->Row(), "ID")));
    if (node != nullptr) SetSequence(*node, fetch->Row().Item("SeqNo").Value().Integer());
  }
}

void RepositoryNotifications::AddElement(std::string_view entity, std::int32_t id, std::int32_t ruleID) {
  if (catalogue::MakeKey(catalogue::kRule, ruleID) != services_.host.CurrentKey()) return;
  const bool isIO = entity == catalogue::kRuleIO;
  ListView& list = isIO ? services_.widgets.lvIOElems : services_.widgets.lvConditions;
  const std::string_view attributes =
      isIO ? "IOName,Kind,BusinessName,Description" : "CondName,Operator,Argument,Description";
  const auto fetch = catalogue::NewQuery(services_.Repository());
  fetch->SetRoot(fetch->AddObject(false, entity, attributes, IDFilter(id)));
  if (fetch->Execute("")) return;
  ListRow* const added = list.Add(catalogue::ElementRowKey(id), "");
  if (added == nullptr) return;
  for (const auto& column : list.Columns()) added->SetSubItem(column.key, fetch->Row().Item(column.key).Text());
}

void RepositoryNotifications::RemoveRuleSet(std::int32_t callID, std::int32_t functionID) {
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "", IDFilter(callID));
  const auto refersBack = fetch->AddRelation("IsRefferedBy", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRuleSet, "ID", {}, refersBack));
  if (fetch->Execute("")) return;
  TreeNode* const node = tree_.Find(catalogue::RuleSetNodeKey(functionID, IDField(fetch->Row(), "ID")));
  if (node != nullptr) tree_.Remove(*node);
}

}  // namespace qmrules::browser
