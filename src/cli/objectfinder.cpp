#include "cli/objectfinder.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "catalogue/gateway.h"
#include "platform/error.h"

namespace qmrules::cli {

using catalogue::IDField;
using catalogue::kBusinessFunction;
using catalogue::kRule;
using catalogue::kRuleSet;
using catalogue::kRuleSetCall;
using catalogue::MakeKey;
using platform::Error;

namespace {

constexpr std::string_view kSeeList = "\"qmrules list\" shows the functions, rule sets and rules with their keys";
constexpr std::size_t kLongestPath = 3;
constexpr std::size_t kShownKeys = 10;

// The names of a path, with the escapes taken away.
std::vector<std::string> SplitPath(std::string_view text) {
  std::vector<std::string> names(1);
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '/') {
      names.emplace_back();
    } else if (text[at] == '\\' && at + 1 < text.size() && (text[at + 1] == '/' || text[at + 1] == '\\')) {
      names.back() += text[++at];
    } else {
      names.back() += text[at];
    }
  }
  const bool hasGap = std::any_of(names.begin() + 1, names.end(), [](const auto& name) { return name.empty(); });
  if (text.empty() || hasGap || names.size() > kLongestPath) {
    throw Error(fmt::format(
        "\"{}\" is neither a key nor a path: write \"RULE#12\" or \"Function/Rule set/Rule\"; \"\\/\" stands "
        "for a \"/\" in a name.",
        text));
  }
  return names;
}

// The key that the text is, its entity as the schema writes it; nothing for a text that is none.
std::optional<FoundObject> AsKey(const platform::Schema& schema, std::string_view text) {
  const std::size_t mark = text.find('#');
  if (mark == std::string_view::npos) return std::nullopt;
  const auto* entity = schema.FindEntity(text.substr(0, mark));
  const std::string_view digits = text.substr(mark + 1);
  if (entity == nullptr || digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  return FoundObject{entity->Name(), catalogue::SplitKey(text).id, 0};
}

std::vector<std::int32_t> Distinct(platform::Fetch& fetch, std::string_view projectKey) {
  std::vector<std::int32_t> ids;
  for (fetch.Execute(projectKey); !fetch.Eof(); fetch.MoveNext()) {
    const std::int32_t id = IDField(fetch.Row(), "ID");
    if (std::ranges::find(ids, id) == ids.end()) ids.push_back(id);
  }
  return ids;
}

std::int32_t OnlyOne(const std::vector<std::int32_t>& ids, std::string_view entity, std::string_view text,
                     const std::string& none) {
  if (ids.empty()) throw Error(fmt::format("{}; {}.", none, kSeeList));
  if (ids.size() == 1) return ids.front();
  std::string keys;
  for (std::size_t at = 0; at < std::min(ids.size(), kShownKeys); ++at) {
    keys += (at == 0 ? "" : ", ") + MakeKey(entity, ids[at]);
  }
  if (ids.size() > kShownKeys) keys += fmt::format(" and {} more", ids.size() - kShownKeys);
  throw Error(fmt::format("\"{}\" can mean {}; name it by its key.", text, keys));
}

void RequireEntity(const FoundObject& object, std::string_view entity, std::string_view text) {
  if (object.entity == entity) return;
  throw Error(fmt::format("\"{}\" names {}, and a {} is wanted here; {}.", text, object.Key(), entity, kSeeList));
}

}  // namespace

std::string FoundObject::Key() const {
  return MakeKey(entity, id);
}

ObjectFinder::ObjectFinder(workbench::EmbeddedHost& host)
    : host_(host), projectKey_(host.ProjectObject()->ObjectID()) {}

FoundObject ObjectFinder::Find(std::string_view text) const {
  auto& repository = host_.Repository();
  const auto key = AsKey(repository.Schema(), text);
  if (!key) return FindPath(text, SplitPath(text));
  if (repository.CountObjects(key->entity, fmt::format("ID={}", key->id)) == 0) {
    throw Error(fmt::format("There is no object {}; {}.", key->Key(), kSeeList));
  }
  return *key;
}

FoundObject ObjectFinder::FindPath(std::string_view text, const std::vector<std::string>& names) const {
  std::int32_t functionID = 0;
  if (names.size() == 1 || !names[0].empty()) {
    functionID = OnlyOne(FunctionsNamed(names[0]), kBusinessFunction, text,
                         fmt::format("The project has no business function \"{}\"", names[0]));
  }
  if (names.size() == 1) return {std::string(kBusinessFunction), functionID, 0};
  const std::int32_t ruleSetID =
      OnlyOne(RuleSetsNamed(names[1], functionID), kRuleSet, text,
              functionID == 0 ? fmt::format("The project has no rule set \"{}\" without a function", names[1])
                              : fmt::format("The function \"{}\" has no rule set \"{}\"", names[0], names[1]));
  if (names.size() == 2) return {std::string(kRuleSet), ruleSetID, functionID};
  const std::int32_t ruleID = OnlyOne(RulesNamed(names[2], ruleSetID), kRule, text,
                                      fmt::format("The rule set \"{}\" has no rule \"{}\"", names[1], names[2]));
  return {std::string(kRule), ruleID, functionID};
}

FoundObject ObjectFinder::FindFunction(std::string_view text) const {
  auto found = Find(text);
  RequireEntity(found, kBusinessFunction, text);
  return found;
}

FoundObject ObjectFinder::FindRuleSet(std::string_view text) const {
  if (!AsKey(host_.Repository().Schema(), text)) {
    const auto names = SplitPath(text);
    if (names.size() == 1) {
      const auto fetch = catalogue::NewQuery(host_.Repository());
      fetch->SetRoot(fetch->AddObject(true, kRuleSet, "ID", "Name=" + platform::FilterValue(names[0])));
      return {std::string(kRuleSet),
              OnlyOne(Distinct(*fetch, projectKey_), kRuleSet, text,
                      fmt::format("The project has no rule set \"{}\"", names[0])),
              0};
    }
  }
  auto found = Find(text);
  RequireEntity(found, kRuleSet, text);
  return found;
}

FoundObject ObjectFinder::FindRuleOf(std::int32_t ruleSetID, std::string_view text) const {
  FoundObject found;
  const bool isBareName = !AsKey(host_.Repository().Schema(), text) && SplitPath(text).size() == 1;
  if (isBareName) {
    const std::string name = SplitPath(text).front();
    found = {std::string(kRule),
             OnlyOne(RulesNamed(name, ruleSetID), kRule, text,
                     fmt::format("{} has no rule \"{}\"", MakeKey(kRuleSet, ruleSetID), name)),
             0};
  } else {
    found = Find(text);
  }
  RequireEntity(found, kRule, text);
  if (RuleSetOf(found.id) != ruleSetID) {
    throw Error(fmt::format("{} is no rule of {}; {}.", found.Key(), MakeKey(kRuleSet, ruleSetID), kSeeList));
  }
  return found;
}

std::vector<std::int32_t> ObjectFinder::FunctionsNamed(const std::string& name) const {
  const auto fetch = catalogue::NewQuery(host_.Repository());
  fetch->SetRoot(fetch->AddObject(true, kBusinessFunction, "ID", "Name=" + platform::FilterValue(name)));
  return Distinct(*fetch, projectKey_);
}

std::vector<std::int32_t> ObjectFinder::RuleSetsNamed(const std::string& name, std::int32_t functionID) const {
  const auto fetch = catalogue::NewQuery(host_.Repository());
  const auto set = fetch->AddObject(true, kRuleSet, "ID", "Name=" + platform::FilterValue(name));
  if (functionID == 0) {
    fetch->SetRoot(set);
    auto ids = Distinct(*fetch, projectKey_);
    std::erase_if(ids, [this](std::int32_t id) { return !FunctionsOf(id).empty(); });
    return ids;
  }
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, kRuleSetCall, "", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, kBusinessFunction, "", fmt::format("ID={}", functionID), triggers));
  return Distinct(*fetch, projectKey_);
}

std::vector<std::int32_t> ObjectFinder::RulesNamed(const std::string& name, std::int32_t ruleSetID) const {
  const auto fetch = catalogue::NewQuery(host_.Repository());
  const auto rule = fetch->AddObject(false, kRule, "ID,>SeqNo", "RuleName=" + platform::FilterValue(name));
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, kRuleSet, "", fmt::format("ID={}", ruleSetID), has));
  return Distinct(*fetch, projectKey_);
}

std::vector<std::int32_t> ObjectFinder::FunctionsOf(std::int32_t ruleSetID) const {
  const auto fetch = catalogue::NewQuery(host_.Repository());
  const auto function = fetch->AddObject(true, kBusinessFunction, "ID,>Name");
  const auto triggeredBy = fetch->AddRelation("IsTriggeredBy", false, "", function);
  const auto call = fetch->AddObject(false, kRuleSetCall, "", {}, triggeredBy);
  const auto referredBy = fetch->AddRelation("IsRefferedBy", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, kRuleSet, "", fmt::format("ID={}", ruleSetID), referredBy));
  return Distinct(*fetch, projectKey_);
}

std::int32_t ObjectFinder::RuleSetOf(std::int32_t ruleID) const {
  const auto fetch = catalogue::NewQuery(host_.Repository());
  const auto set = fetch->AddObject(false, kRuleSet, "ID");
  const auto belongs = fetch->AddRelation("BelongsToRuleSet", false, "", set);
  fetch->SetRoot(fetch->AddObject(false, kRule, "", fmt::format("ID={}", ruleID), belongs));
  return fetch->Execute("") ? 0 : IDField(fetch->Row(), "ID");
}

void ObjectFinder::RequireInProject(const FoundObject& object) const {
  if (host_.Repository().object(object.Key())->BelongsToProject(projectKey_)) return;
  throw Error(
      fmt::format("{} is not part of the current project \"{}\"; make its project the current one with "
                  "\"qmrules project use NAME\".",
                  object.Key(), host_.Folder().CurrentProject()));
}

}  // namespace qmrules::cli
