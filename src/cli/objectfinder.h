#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/host/embeddedhost.h"

// The objects that a command line names.
//
// A key is written as "RULE#12", its entity in any case. A path is "Function", "Function/Rule set" or
// "Function/Rule set/Rule", by the names in the current project; "\/" stands for a "/" in a name and "\\" for a "\". A
// path that begins with "/" leads to a rule set that no function of the project triggers.
namespace qmrules::cli {

inline constexpr const char* kKeyHelp =
    "The object, as \"RULE#12\" or by its path \"Function/Rule set/Rule\" (\"\\/\" for a \"/\" in a name)";

struct FoundObject {
  std::string entity;
  std::int32_t id = 0;
  std::int32_t functionID = 0;  // of the path by which it was found; 0 when a key named it, and for a function itself
  std::string Key() const;
};

class ObjectFinder {
 public:
  // The host outlives the finder.
  explicit ObjectFinder(workbench::EmbeddedHost& host);

  // Each throws platform::Error that says what to do next: when there is no such object, when the path can mean several
  // (it names their keys), and when it is of another entity than the one asked for.
  FoundObject Find(std::string_view text) const;
  FoundObject FindFunction(std::string_view text) const;
  // A rule set, also by its bare name, which is unique.
  FoundObject FindRuleSet(std::string_view text) const;
  // A rule of the rule set, also by its bare name.
  FoundObject FindRuleOf(std::int32_t ruleSetID, std::string_view text) const;

  // The functions of the project that trigger the rule set, in the order of their names.
  std::vector<std::int32_t> FunctionsOf(std::int32_t ruleSetID) const;
  // The rule set that holds the rule; 0 for none.
  std::int32_t RuleSetOf(std::int32_t ruleID) const;

  // Throws platform::Error for an object that is not part of the current project.
  void RequireInProject(const FoundObject& object) const;

 private:
  FoundObject FindPath(std::string_view text, const std::vector<std::string>& names) const;
  std::vector<std::int32_t> FunctionsNamed(const std::string& name) const;
  std::vector<std::int32_t> RuleSetsNamed(const std::string& name, std::int32_t functionID) const;
  std::vector<std::int32_t> RulesNamed(const std::string& name, std::int32_t ruleSetID) const;

  workbench::EmbeddedHost& host_;
  std::string projectKey_;
};

}  // namespace qmrules::cli
