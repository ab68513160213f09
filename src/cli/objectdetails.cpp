#include "cli/objectdetails.h"

#include <fmt/format.h>

#include <optional>
#include <utility>

#include "catalogue/gateway.h"

namespace qmrules::cli {

using catalogue::kBusinessFunction;
using catalogue::kRule;
using catalogue::kRuleCond;
using catalogue::kRuleIO;
using catalogue::kRuleSet;
using catalogue::kRuleSetCall;

namespace {

// Labels of the string table.
constexpr int kArgument = 104;
constexpr int kBusinessName = 112;
constexpr int kTriggeredByRule = 117;
constexpr int kControlConditions = 118;
constexpr int kDescription = 132;
constexpr int kTriggers = 138;
constexpr int kFromRuleSet = 141;
constexpr int kDataElements = 144;
constexpr int kKind = 146;
constexpr int kName = 155;
constexpr int kOperator = 165;
constexpr int kRuleSets = 180;
constexpr int kRules = 182;

// One step of a path, from the shown object outward.
struct Step {
  std::string_view relation;
  std::string_view entity;
  std::string_view fetchList;
};

struct Column {
  std::string field;  // of the fetch; "" for the key of the last step's object
  int label = 0;      // 0 for a title that is the same in every language
};

class DetailsReader {
 public:
  DetailsReader(workbench::EmbeddedHost& host, const shell::StringTable& texts, const FoundObject& object)
      : host_(host), texts_(texts), object_(object), projectKey_(host.ProjectObject()->ObjectID()) {}

  std::vector<ShownList> Lists() const {
    if (object_.entity == kBusinessFunction) return ListsOfFunction();
    if (object_.entity == kRuleSet) return ListsOfRuleSet();
    if (object_.entity == kRule) return ListsOfRule();
    return {};
  }

 private:
  std::vector<ShownList> ListsOfFunction() const {
    return {Read("ruleSets", texts_.Text(kRuleSets),
                 {{"Triggers", kRuleSetCall, ">SeqNo"}, {"Refers", kRuleSet, "ID,Name"}},
                 {{"", 0}, {"SeqNo", 0}, {"Name", kName}})};
  }

  std::vector<ShownList> ListsOfRuleSet() const {
    return {Read("rules", texts_.Text(kRules), {{"Has", kRule, "ID,RuleName,>SeqNo"}},
                 {{"", 0}, {"SeqNo", 0}, {"RuleName", kName}}),
            Read("triggeredBy", texts_.Text(kTriggeredByRule),
                 {{"IsTriggeredBy", kRule, "ID:RuleID,>RuleName"}, {"BelongsToRuleSet", kRuleSet, "ID,Name"}},
                 {{"RuleName", kTriggeredByRule}, {"Name", kFromRuleSet}, {"", 0}})};
  }

  std::vector<ShownList> ListsOfRule() const {
    return {Read("dataElements", texts_.Text(kDataElements),
                 {{"BelongsToRule", kRuleIO, "ID,>IOName,Kind,BusinessName,Description"}},
                 {{"", 0},
                  {"IOName", kName},
                  {"Kind", kKind},
                  {"BusinessName", kBusinessName},
                  {"Description", kDescription}}),
            Read("conditions", texts_.Text(kControlConditions),
                 {{"Controls", kRuleCond, "ID,>CondName,Operator,Argument,Description"}},
                 {{"", 0},
                  {"CondName", kName},
                  {"Operator", kOperator},
                  {"Argument", kArgument},
                  {"Description", kDescription}}),
            Read("triggers", PlainLabel(texts_, kTriggers), {{"Triggers", kRuleSet, "ID,>Name"}},
                 {{"", 0}, {"Name", kName}})};
  }

  // The objects at the end of the steps. They are declared from the far end to the shown object, which is the root.
  ShownList Read(std::string name, std::string title, const std::vector<Step>& steps,
                 const std::vector<Column>& columns) const {
    ShownList list{std::move(name), std::move(title), {}, {}};
    for (const auto& column : columns) {
      const bool isKey = column.field.empty();
      list.columns.emplace_back(isKey ? "Key" : column.field,
                                column.label == 0 ? (isKey ? "Key" : column.field) : texts_.Text(column.label));
    }
    const auto fetch = catalogue::NewQuery(host_.Repository());
    std::optional<platform::RelationNode> related;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
      const auto node = fetch->AddObject(false, step->entity, step->fetchList, {}, related);
      related = fetch->AddRelation(step->relation, false, "", node);
    }
    fetch->SetRoot(fetch->AddObject(false, object_.entity, "", fmt::format("ID={}", object_.id), related));
    for (fetch->Execute(projectKey_); !fetch->Eof(); fetch->MoveNext()) {
      const auto& row = fetch->Row();
      auto& cells = list.rows.emplace_back();
      for (const auto& column : columns) {
        cells.push_back(column.field.empty() ? catalogue::MakeKey(steps.back().entity, catalogue::IDField(row, "ID"))
                                             : row.Item(column.field).Text());
      }
    }
    return list;
  }

  workbench::EmbeddedHost& host_;
  const shell::StringTable& texts_;
  const FoundObject& object_;
  std::string projectKey_;
};

bool IsEditable(const FoundObject& object, const std::string& attribute,
                const platform::KeyedCollection<std::string>& editable) {
  if (object.entity == kRule) return editable.Contains(attribute);
  const bool isCommon = attribute == "Name" || attribute == "Description";
  if (object.entity == kRuleSet) return isCommon;
  return object.entity == kBusinessFunction && (isCommon || attribute == "BusinessArea");
}

}  // namespace

ObjectDetails ReadObjectDetails(workbench::EmbeddedHost& host, const shell::StringTable& texts,
                                const FoundObject& found, const platform::KeyedCollection<std::string>& editable) {
  const auto object = host.Repository().object(found.Key());
  const bool isRule = found.entity == kRule;
  ObjectDetails details;
  details.key = found.Key();
  details.name = object->Attrs(isRule ? "RuleName" : "Name").Text();
  for (const auto* attribute : object->EntityDef().Attrs()) {
    const std::string& name = attribute->Name();
    if (isRule && (name == "Name" || name == "SourceText")) continue;
    details.attributes.push_back({name, attribute->Caption(), object->Attrs(name), IsEditable(found, name, editable)});
  }
  if (isRule && !object->Attrs("Program").Text().empty()) {
    details.hasSegment = true;
    details.fromRow = object->Attrs("FromRow").Integer();
    details.sourceText = object->Attrs("SourceText").Text();
  }
  details.lists = DetailsReader(host, texts, found).Lists();
  return details;
}

}  // namespace qmrules::cli
