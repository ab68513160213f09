#include "editing/businessfunctions.h"

#include <fmt/format.h>

#include "catalogue/gateway.h"
#include "editing/messagenumbers.h"
#include "editing/newobject.h"
#include "platform/error.h"
#include "shell/text.h"
#include "shell/trim.h"

namespace qmrules::editing {

using catalogue::kBusinessFunction;
using platform::MessageStyle;
using platform::Object;

namespace {

constexpr int kEnterFunctionName = 512;
constexpr int kFunctionExists = 513;
constexpr int kCannotCreateFunction = 514;
constexpr int kFunctionExistsElsewhere = 623;

struct SafeTexts {
  std::string name;
  std::string description;
};

Refused CannotCreate(const EditingContext& context, std::string_view reason) {
  return {TwoLines(context.texts.Text(kCannotCreateFunction), reason, MessageStyle::Exclamation)};
}

void PutDescription(Object& function, const std::string& description) {
  function.Edit();
  function.Attrs("Description", description);
  function.Post();
}

BusinessFunctionOutcome TakeExisting(const EditingContext& context, Object& found, const SafeTexts& wanted,
                                     std::string_view projectKey) {
  if (wanted.name != context.globals.UnassignedBFName)
    return CannotCreate(context, context.texts.Text(kProbablyExists));
  const bool isHere = found.BelongsToProject(projectKey);
  const Notice notice{
      shell::Subst(context.texts.Text(isHere ? kFunctionExists : kFunctionExistsElsewhere), {wanted.name}),
      MessageStyle::Information};
  if (!isHere) return Refused{notice};
  if (found.Attrs("Description").Text() != wanted.description) PutDescription(found, wanted.description);
  return ExistingFunction{catalogue::SplitKey(found.Key()).id, notice};
}

BusinessFunctionOutcome MakeNew(const EditingContext& context, const SafeTexts& wanted, std::string_view projectKey) {
  auto& repository = context.Repository();
  const auto transaction = repository.BeginTransaction();
  const auto function = TryNewObject(repository, kBusinessFunction, wanted.name);
  if (!function) return CannotCreate(context, context.texts.Text(kProbablyExists));
  try {
    function->Link("BelongsTo", projectKey);
    PutDescription(*function, wanted.description);
    transaction->Commit();
  } catch (const platform::Error& error) {
    return CannotCreate(context, error.what());
  }
  return Created{catalogue::SplitKey(function->Key()).id, wanted.name, wanted.description};
}

}  // namespace

NewBusinessFunction ProposedFunction(const EditingContext& context, const NewBusinessFunction& given) {
  const auto& globals = context.globals;
  if (!given.name.empty() && given.name != globals.UnassignedBFName) return given;

  auto& repository = context.Repository();
  const auto fetch = catalogue::NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, kBusinessFunction, "ID,Description",
                                  "Name=" + platform::FilterValue(globals.UnassignedBFName)));
  if (fetch->Execute("")) return {globals.UnassignedBFName, globals.UnassignedBFDescr};
  const std::string key = catalogue::MakeKey(kBusinessFunction, catalogue::IDField(fetch->Row(), "ID"));
  if (!repository.object(key)->BelongsToProject(context.frontEnd.ProjectObject()->ObjectID())) return {};
  return {globals.UnassignedBFName, fetch->Row().Item("Description").Text()};
}

BusinessFunctionOutcome CreateBusinessFunction(const EditingContext& context, const NewBusinessFunction& wanted) {
  const SafeTexts safe{shell::SafeText(wanted.name), shell::SafeText(wanted.description)};
  if (shell::IsBlank(safe.name)) return Refused{OneLine(context.texts, kEnterFunctionName, MessageStyle::Exclamation)};

  auto& repository = context.Repository();
  const auto command = repository.BeginCommand("CreateFunction");
  const std::string projectKey = context.frontEnd.ProjectObject()->ObjectID();
  if (const auto found = repository.FindObject(kBusinessFunction, safe.name)) {
    return TakeExisting(context, *found, safe, projectKey);
  }
  return MakeNew(context, safe, projectKey);
}

}  // namespace qmrules::editing
