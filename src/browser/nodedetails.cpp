#include "browser/nodedetails.h"

#include <fmt/format.h>

#include <string_view>

#include "browser/elementplace.h"
#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "platform/error.h"

namespace qmrules::browser {

using catalogue::IDField;
using catalogue::kBusinessFunction;
using catalogue::kRule;
using catalogue::kRuleSet;
using catalogue::NewQuery;
using platform::Fetch;
using platform::FetchRow;
using platform::widgets::ListView;
using platform::widgets::TreeNode;

namespace {

// Reads one node into `details`.
class Reading {
 public:
  Reading(const BrowserServices& services, const ObjectTree& tree, const AttributePanel& attributes, std::int32_t id)
      : services_(services), tree_(tree), attributes_(attributes), id_(id), byID_(fmt::format("ID={}", id)) {}

  void Function();
  void RuleSet();
  void Rule();
  NodeDetails Take() { return std::move(details_); }

 private:
  std::unique_ptr<Fetch> ReadObject(std::string_view entity, const std::string& attributes) const;
  void RuleSetsOfFunction();
  void RulesOfSet();
  void TriggeringRules();
  void Segment(const FetchRow& row);
  std::string ProgramKey(const std::string& model, const std::string& program) const;
  std::vector<DetailRow> Elements(std::string_view entity, std::string_view relation, std::string_view attributes,
                                  const ListView& list) const;
  void TriggeredSet();

  const BrowserServices& services_;
  const ObjectTree& tree_;
  const AttributePanel& attributes_;
  std::int32_t id_;
  std::string byID_;
  NodeDetails details_;
};

// The object itself, in the fetch's first row.
std::unique_ptr<Fetch> Reading::ReadObject(std::string_view entity, const std::string& attributes) const {
  auto fetch = NewQuery(services_.Repository());
  fetch->SetRoot(fetch->AddObject(false, entity, attributes, byID_));
  if (fetch->Execute("")) {
    throw platform::Error(
        fmt::format("{} has been deleted. Refresh the tree to see what is there.", catalogue::MakeKey(entity, id_)));
  }
  return fetch;
}

void Reading::Function() {
  const auto fetch = ReadObject(kBusinessFunction, "Name,Description,BusinessArea");
  details_.name = fetch->Row().Item("Name").Text();
  details_.description = fetch->Row().Item("Description").Text();
  details_.business = fetch->Row().Item("BusinessArea").Text();
  RuleSetsOfFunction();
}

void Reading::RuleSetsOfFunction() {
  const auto fetch = NewQuery(services_.Repository());
  const auto set = fetch->AddObject(false, kRuleSet, "ID,Name");
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, ">SeqNo", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, kBusinessFunction, "", byID_, triggers));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const std::int32_t setID = IDField(fetch->Row(), "ID");
    details_.content.push_back(
        {catalogue::RuleSetRowKey(setID), {fetch->Row().Item("Name").Text()}, "", tree_.IsForeign(setID)});
  }
}

void Reading::RuleSet() {
  const auto fetch = ReadObject(kRuleSet, "Name,Description");
  details_.name = fetch->Row().Item("Name").Text();
  details_.description = fetch->Row().Item("Description").Text();
  RulesOfSet();
  TriggeringRules();
}

void Reading::RulesOfSet() {
  const auto fetch = NewQuery(services_.Repository());
  const auto rule = fetch->AddObject(false, kRule, "ID,RuleName,>SeqNo");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, kRuleSet, "", byID_, has));
  for (fetch->Execute(services_.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    details_.content.push_back(
        {catalogue::RuleRowKey(IDField(fetch->Row(), "ID")), {fetch->Row().Item("RuleName").Text()}, "", false});
  }
}

void Reading::TriggeringRules() {
  const auto fetch = NewQuery(services_.Repository());
  const auto around = fetch->AddObject(false, kRuleSet, "Name:RuleSetName,ID:SetID");
  const auto belongs = fetch->AddRelation("BelongsToRuleSet", false, "", around);
  const auto rule = fetch->AddObject(false, kRule, "ID:RuleID,RuleName", {}, belongs);
  const auto triggered = fetch->AddRelation("IsTriggeredBy", false, "", rule);
  fetch->SetRoot(fetch->AddObject(false, kRuleSet, "", byID_, triggered));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const FetchRow& row = fetch->Row();
    details_.triggers.push_back({catalogue::RuleRowKey(IDField(row, "RuleID")),
                                 {row.Item("RuleName").Text(), row.Item("RuleSetName").Text()},
                                 "",
                                 tree_.IsForeign(IDField(row, "SetID"))});
  }
}

void Reading::Rule() {
  const auto fetch = ReadObject(kRule, "RuleName," + attributes_.FetchList());
  const FetchRow& row = fetch->Row();
  details_.name = row.Item("RuleName").Text();
  details_.description = row.Item("Description").Text();
  details_.business = row.Item("BusinessDescription").Text();
  for (int index = 1; index <= attributes_.Count(); ++index) {
    details_.attributes.push_back(attributes_.ShownText(index, row.Item(attributes_.Definition(index).Name())));
  }
  Segment(row);
  const ControlWidgets& widgets = services_.widgets;
  details_.dataElements =
      Elements(catalogue::kRuleIO, "BelongsToRule", "ID,>IOName,Kind,BusinessName,Description,QMID,SourceType,SourceID",
               widgets.lvIOElems);
  details_.conditions =
      Elements(catalogue::kRuleCond, "Controls", "ID,CondName,Operator,Argument,Description,QMID,SourceType,SourceID",
               widgets.lvConditions);
  TriggeredSet();
}

void Reading::Segment(const FetchRow& row) {
  SegmentPlace& segment = details_.segment;
  segment.model = row.Item("Model").Text();
  if (segment.model.empty()) return;
  segment.fileName = row.Item("FileName").Text();
  segment.fromRow = row.Item("FromRow").Value().Integer();
  segment.toRow = row.Item("ToRow").Value().Integer();
  segment.programKey = ProgramKey(segment.model, row.Item("Program").Text());
}

// A model that the repository does not know has no programs.
std::string Reading::ProgramKey(const std::string& model, const std::string& program) const {
  if (services_.Repository().Schema().FindEntity(model) == nullptr) return "";
  const auto fetch = NewQuery(services_.Repository());
  fetch->SetRoot(fetch->AddObject(true, model, "ID", "Name=" + platform::FilterValue(program)));
  if (fetch->Execute(services_.ProjectKey())) return "";
  return catalogue::MakeKey(model, IDField(fetch->Row(), "ID"));
}

std::vector<DetailRow> Reading::Elements(std::string_view entity, std::string_view relation,
                                         std::string_view attributes, const ListView& list) const {
  const auto fetch = NewQuery(services_.Repository());
  const auto element = fetch->AddObject(false, entity, attributes);
  const auto belongs = fetch->AddRelation(relation, false, "", element);
  fetch->SetRoot(fetch->AddObject(false, kRule, "", byID_, belongs));
  std::vector<DetailRow> rows;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const FetchRow& row = fetch->Row();
    DetailRow& added = rows.emplace_back();
    added.key = catalogue::ElementRowKey(IDField(row, "ID"));
    for (const auto& column : list.Columns()) added.cells.push_back(row.Item(column.key).Text());
    added.tag = ElementTag(row.Item("QMID").Text(), row.Item("SourceType").Text(), row.Item("SourceID").Text());
  }
  return rows;
}

void Reading::TriggeredSet() {
  const auto fetch = NewQuery(services_.Repository());
  const auto set = fetch->AddObject(false, kRuleSet, "ID,Name");
  const auto triggers = fetch->AddRelation("Triggers", false, "", set);
  fetch->SetRoot(fetch->AddObject(false, kRule, "", byID_, triggers));
  if (fetch->Execute("")) return;
  details_.triggeredID = IDField(fetch->Row(), "ID");
  details_.triggeredName = fetch->Row().Item("Name").Text();
}

}  // namespace

NodeDetails ReadNodeDetails(const BrowserServices& services, const ObjectTree& tree, const AttributePanel& attributes,
                            const TreeNode& node) {
  Reading reading(services, tree, attributes, NodeID(node));
  if (IsFunction(node)) {
    reading.Function();
  } else if (IsRuleSet(node)) {
    reading.RuleSet();
  } else {
    reading.Rule();
  }
  return reading.Take();
}

}  // namespace qmrules::browser
