#include "editing/rulesets.h"

#include <fmt/format.h>

#include <memory>

#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"
#include "catalogue/sequence.h"
#include "catalogue/uniquename.h"
#include "editing/messagenumbers.h"
#include "editing/newobject.h"
#include "platform/error.h"
#include "shell/text.h"
#include "shell/trim.h"

namespace qmrules::editing {

using catalogue::kBusinessFunction;
using catalogue::kRuleSet;
using catalogue::kRuleSetCall;
using catalogue::MakeKey;
using catalogue::SplitKey;
using platform::MessageStyle;
using platform::Object;

namespace {

constexpr int kContinue = 535;
constexpr int kEnterRuleSetName = 537;
constexpr int kCannotCreateRuleSet = 539;
constexpr int kRuleSetExists = 540;
constexpr int kOutsideOfFunction = 541;
constexpr int kRuleSetExistsElsewhere = 619;
constexpr int kMustBelongToProject = 635;

// One creation under way: the request with its texts made safe.
struct Creation {
  const EditingContext& context;
  NewRuleSet wanted;
  std::string projectKey;
  std::string functionKey;
};

Refused CannotCreate(const EditingContext& context) {
  return {TwoLines(context.texts.Text(kCannotCreateRuleSet), context.texts.Text(kProbablyExists),
                   MessageStyle::Exclamation)};
}

// The object of this name, or nothing when there is none or the store cannot tell.
std::unique_ptr<Object> Find(platform::Repository& repository, const std::string& name) {
  std::unique_ptr<Object> found;
  catalogue::WithErrorsIgnored([&] { found = repository.FindObject(kRuleSet, name); });
  return found;
}

void PutDescriptionWhereItDiffers(Object& ruleSet, const std::string& description) {
  if (ruleSet.Attrs("Description").Text() == description) return;
  ruleSet.Edit();
  ruleSet.Attrs("Description", description);
  ruleSet.Post();
}

// The call behind which the new one goes; 0 for the end.
std::int32_t CallToFollow(const Creation& creation) {
  if (creation.wanted.afterRuleSetID == 0) return 0;
  const auto fetch = catalogue::NewQuery(creation.context.Repository());
  const auto set = fetch->AddObject(true, kRuleSet, "", fmt::format("ID={}", creation.wanted.afterRuleSetID));
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, kRuleSetCall, "ID", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(
      fetch->AddObject(true, kBusinessFunction, "", fmt::format("ID={}", creation.wanted.functionID), triggers));
  return fetch->Execute(creation.projectKey) ? 0 : catalogue::IDField(fetch->Row(), "ID");
}

// Makes the call by which the function triggers the rule set; returns its ID.
std::int32_t MakeCall(const Creation& creation, const std::string& ruleSetKey) {
  auto& repository = creation.context.Repository();
  const auto call = repository.NewObject(kRuleSetCall, catalogue::UniqueName());
  call->Edit();
  call->Attrs("SeqNo", catalogue::NextSeqNo(repository, {.parentEntity = kBusinessFunction,
                                                         .parentID = creation.wanted.functionID,
                                                         .relation = "Triggers",
                                                         .childEntity = kRuleSetCall,
                                                         .afterID = CallToFollow(creation)}));
  call->Attrs("SID", creation.functionKey);
  call->Post();
  call->Link("Refers", ruleSetKey);
  repository.object(creation.functionKey)->Link("Triggers", call->Key());
  return SplitKey(call->Key()).id;
}

RuleSetOutcome MakeNew(const Creation& creation) {
  const auto& wanted = creation.wanted;
  auto& repository = creation.context.Repository();
  const auto transaction = repository.BeginTransaction();
  const auto ruleSet = TryNewObject(repository, kRuleSet, wanted.name);
  if (!ruleSet) return CannotCreate(creation.context);
  ruleSet->Edit();
  ruleSet->Attrs("Description", wanted.description);
  ruleSet->Post();
  if (!ruleSet->BelongsToProject(creation.projectKey)) ruleSet->Link("BelongsTo", creation.projectKey);
  const std::int32_t callID = MakeCall(creation, ruleSet->Key());
  transaction->Commit();
  return CreatedRuleSet{SplitKey(ruleSet->Key()).id, callID, wanted.name, wanted.description};
}

RuleSetOutcome TakeOrdinary(const Creation& creation, const Object& found) {
  const auto& texts = creation.context.texts;
  const auto& name = creation.wanted.name;
  if (!found.BelongsToProject(creation.projectKey)) {
    return Refused{{shell::Subst(texts.Text(kRuleSetExistsElsewhere), {name}), MessageStyle::Exclamation}};
  }
  return RuleSetQuestion{SplitKey(found.Key()).id, TwoLines(shell::Subst(texts.Text(kRuleSetExists), {name}),
                                                            texts.Text(kContinue), MessageStyle::QuestionOkCancel)};
}

// The rule set for rules without a home stands under the function of the same purpose only.
RuleSetOutcome MakeOrTakeDefault(const Creation& creation, const Object& function) {
  const auto& [context, wanted, projectKey, functionKey] = creation;
  const std::string& functionName = context.globals.UnassignedBFName;
  if (function.Attrs("Name").Text() != functionName) {
    return Refused{
        {shell::Subst(context.texts.Text(kOutsideOfFunction), {wanted.name, functionName}), MessageStyle::Exclamation}};
  }
  const auto found = context.Repository().FindObject(kRuleSet, wanted.name);
  if (!found) return MakeNew(creation);

  PutDescriptionWhereItDiffers(*found, wanted.description);
  const bool isHere = found->BelongsToProject(projectKey);
  const std::string exists = shell::Subst(context.texts.Text(kRuleSetExists), {wanted.name});
  return ExistingRuleSet{SplitKey(found->Key()).id,
                         isHere ? Notice{exists, MessageStyle::Information}
                                : TwoLines(exists, context.texts.Text(kMustBelongToProject), MessageStyle::Exclamation),
                         isHere};
}

}  // namespace

RuleSetOutcome CreateRuleSet(const EditingContext& context, const NewRuleSet& wanted) {
  Creation creation{context, wanted, {}, MakeKey(kBusinessFunction, wanted.functionID)};
  creation.wanted.name = shell::SafeText(wanted.name);
  creation.wanted.description = shell::SafeText(wanted.description);
  const std::string& name = creation.wanted.name;
  if (shell::IsBlank(name)) return Refused{OneLine(context.texts, kEnterRuleSetName, MessageStyle::Exclamation)};

  auto& repository = context.Repository();
  const auto command = repository.BeginCommand("CreateRuleSet");
  creation.projectKey = context.frontEnd.ProjectObject()->ObjectID();
  const auto function = repository.object(creation.functionKey);
  if (!function->BelongsToProject(creation.projectKey)) {
    return Refused{OneLine(context.texts, kCurrentProjectOnly, MessageStyle::Exclamation)};
  }
  if (name == context.globals.UnassignedRSName) return MakeOrTakeDefault(creation, *function);
  const auto found = Find(repository, name);
  return found ? TakeOrdinary(creation, *found) : MakeNew(creation);
}

void UseExistingRuleSet(const EditingContext& context, std::int32_t ruleSetID, std::string_view description) {
  auto& repository = context.Repository();
  const auto command = repository.BeginCommand("CreateRuleSet");
  PutDescriptionWhereItDiffers(*repository.object(MakeKey(kRuleSet, ruleSetID)), shell::SafeText(description));
}

}  // namespace qmrules::editing
