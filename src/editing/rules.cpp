#include "editing/rules.h"

#include <fmt/format.h>

#include <memory>
#include <vector>

#include "catalogue/activitylog.h"
#include "catalogue/attributeschema.h"
#include "catalogue/gateway.h"
#include "catalogue/rulesetcalls.h"
#include "catalogue/sequence.h"
#include "catalogue/uniquename.h"
#include "editing/messagenumbers.h"
#include "editing/newobject.h"
#include "platform/error.h"
#include "shell/text.h"
#include "shell/trim.h"

namespace qmrules::editing {

using catalogue::kBusinessFunction;
using catalogue::kRule;
using catalogue::kRuleSet;
using catalogue::MakeKey;
using catalogue::SplitKey;
using platform::Error;
using platform::MessageStyle;
using platform::Object;

namespace {

constexpr int kEnterRuleName = 529;
constexpr int kCannotCreateRule = 530;
constexpr int kNotAdmissible = 533;
constexpr int kCreated = 600;
constexpr int kNameIsEmpty = 643;

void FillNewRule(const EditingContext& context, const NewRule& wanted, Object& rule) {
  rule.Edit();
  rule.Attrs("RuleName", wanted.name);
  rule.Attrs("Description", wanted.description);
  rule.Attrs("AssignedTo", context.frontEnd.UserName());
  rule.Attrs("SeqNo", catalogue::NextSeqNo(context.Repository(), {.parentEntity = kRuleSet,
                                                                  .parentID = wanted.ruleSetID,
                                                                  .relation = "Has",
                                                                  .childEntity = kRule,
                                                                  .afterID = wanted.afterRuleID}));
  if (wanted.attributeSchema) {
    for (const auto& [name, value] : catalogue::DefaultsOfNewRule(wanted.attributeSchema)) rule.Attrs(name, value);
  }
  segments::PutSegment(rule, wanted.segment, context.clock.Now());
  rule.Attrs("SID", MakeKey(kRuleSet, wanted.ruleSetID));
  rule.Post();
}

const platform::AttrDef& Definition(const Object& object, std::string_view attribute) {
  const auto* definition = object.EntityDef().FindAttr(attribute);
  if (definition == nullptr) {
    throw Error(fmt::format("{} has no attribute {}.", object.EntityDef().Name(), attribute));
  }
  return *definition;
}

[[noreturn]] void ThrowNotEditable(const Object& object, std::string_view attribute, const std::string& editable) {
  throw Error(
      fmt::format("The attribute {} of {} cannot be changed. These can: {}.", attribute, object.Key(), editable));
}

// What the attribute's field shows.
std::string ShownText(const Object& object, const platform::AttrDef& definition) {
  const auto value = object.Attrs(definition.Name());
  if (definition.Type() == platform::AttrType::Boolean) return value.Boolean() ? "true" : "false";
  return value.Text();
}

bool IsAmong(const std::vector<std::string>& choices, std::string_view value) {
  for (const std::string& choice : choices) {
    if (choice == value) return true;
  }
  return false;
}

// The two descriptions have fields of their own, which take any text.
bool IsAdmissible(const platform::XmlDocument& schema, const platform::AttrDef& definition, std::string_view value) {
  const std::string& name = definition.Name();
  if (name == "Description" || name == "BusinessDescription") return true;
  if (definition.Type() == platform::AttrType::Boolean) return IsAmong({"false", "true"}, value);
  if (definition.Type() != platform::AttrType::LongText) {
    const auto entityAttrs = schema.selectSingleNode(catalogue::kRuleAttributesPath);
    const auto choices = entityAttrs ? catalogue::AdmissibleValues(catalogue::AttributeElement(entityAttrs, name))
                                     : std::vector<std::string>();
    if (!choices.empty()) return IsAmong(choices, value);
  }
  return catalogue::IsAttributeValueValid(schema, name, value);
}

void PutAttribute(Object& object, const std::string& name, const std::string& value) {
  object.Edit();
  object.Attrs(name, value);
  object.Post();
}

}  // namespace

RuleOutcome CreateRule(const EditingContext& context, const NewRule& wanted) {
  NewRule safe = wanted;
  safe.name = shell::SafeText(wanted.name);
  safe.description = shell::SafeText(wanted.description);
  if (shell::IsBlank(safe.name)) return Refused{OneLine(context.texts, kEnterRuleName, MessageStyle::Exclamation)};

  auto& repository = context.Repository();
  const auto command = repository.BeginCommand("CreateRule");
  const auto ruleSet = repository.object(MakeKey(kRuleSet, wanted.ruleSetID));
  if (!ruleSet->BelongsToProject(context.frontEnd.ProjectObject()->ObjectID())) {
    return Refused{OneLine(context.texts, kCurrentProjectOnly, MessageStyle::Exclamation)};
  }
  const auto rule = TryNewObject(repository, kRule, catalogue::UniqueName());
  if (!rule) {
    return Refused{TwoLines(context.texts.Text(kCannotCreateRule), context.texts.Text(kProbablyExists),
                            MessageStyle::Exclamation)};
  }
  FillNewRule(context, safe, *rule);
  ruleSet->Link("Has", rule->Key());
  const std::int32_t id = SplitKey(rule->Key()).id;
  catalogue::AddActivity(context.frontEnd, context.clock, id, context.texts.Text(kCreated));
  return Created{id, safe.name, safe.description};
}

ChangeOutcome SetRuleAttribute(const EditingContext& context, const RuleAttributes& attributes, std::int32_t ruleID,
                               const NewValue& wanted) {
  auto& repository = context.Repository();
  const auto rule = repository.object(MakeKey(kRule, ruleID));
  const std::string* const editable = attributes.editable.Find(wanted.attribute);
  if (editable == nullptr) {
    ThrowNotEditable(*rule, wanted.attribute,
                     fmt::format("{}", fmt::join(attributes.editable.begin(), attributes.editable.end(), ", ")));
  }
  const auto& definition = Definition(*rule, *editable);
  if (definition.Name() == "RuleName") return Rename(context, rule->Key(), wanted.value);
  if (wanted.value == ShownText(*rule, definition)) return Unchanged{};
  if (!IsAdmissible(attributes.schema, definition, wanted.value)) {
    return Refused{OneLine(context.texts, kNotAdmissible, MessageStyle::Exclamation)};
  }
  const auto command = repository.BeginCommand("ChangeAttribute");
  const std::string value = shell::SafeText(wanted.value);
  PutAttribute(*rule, definition.Name(), value);
  catalogue::AddActivity(context.frontEnd, context.clock, ruleID,
                         catalogue::ChangedActivity(context.texts, definition.Caption(), value));
  return Changed{value};
}

ChangeOutcome SetObjectAttribute(const EditingContext& context, std::string_view key, const NewValue& wanted) {
  auto& repository = context.Repository();
  const auto object = repository.object(key);
  std::vector<std::string> editable;
  if (object->EntityDef().Name() == kBusinessFunction) editable = {"Name", "Description", "BusinessArea"};
  if (object->EntityDef().Name() == kRuleSet) editable = {"Name", "Description"};
  if (editable.empty()) throw Error(fmt::format("{} is neither a business function nor a rule set.", key));

  const auto& definition = Definition(*object, wanted.attribute);
  if (!IsAmong(editable, definition.Name())) {
    ThrowNotEditable(*object, wanted.attribute, fmt::format("{}", fmt::join(editable, ", ")));
  }
  if (definition.Name() == "Name") return Rename(context, key, wanted.value);
  if (wanted.value == ShownText(*object, definition)) return Unchanged{};
  const auto command = repository.BeginCommand("ChangeAttribute");
  const std::string value = shell::SafeText(wanted.value);
  PutAttribute(*object, definition.Name(), value);
  return Changed{value};
}

ChangeOutcome Rename(const EditingContext& context, std::string_view key, std::string_view name) {
  auto& repository = context.Repository();
  const auto renamed = SplitKey(key);
  if (renamed.entity != kBusinessFunction && renamed.entity != kRuleSet && renamed.entity != kRule) {
    throw Error(fmt::format("{} is neither a business function nor a rule set nor a rule.", key));
  }
  const auto object = repository.object(key);
  const bool isRule = renamed.entity == kRule;
  const auto& definition = Definition(*object, isRule ? "RuleName" : "Name");
  if (name == object->Attrs(definition.Name()).Text()) return Unchanged{};
  const std::string safe = shell::SafeText(name);
  if (shell::IsBlank(safe)) return Refused{OneLine(context.texts, kNameIsEmpty, MessageStyle::Exclamation)};

  const auto command = repository.BeginCommand("Rename");
  const auto transaction = repository.BeginTransaction();
  PutAttribute(*object, definition.Name(), safe);
  if (!isRule) catalogue::RenameCalls(repository, renamed);
  transaction->Commit();
  if (isRule) {
    catalogue::AddActivity(context.frontEnd, context.clock, renamed.id,
                           catalogue::ChangedActivity(context.texts, definition.Caption(), safe));
  }
  return Changed{safe};
}

}  // namespace qmrules::editing
