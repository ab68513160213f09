#include "cli/commandlist.h"

#include <stdexcept>
#include <string>

namespace qmrules::cli {

std::vector<std::unique_ptr<Command>> MakeCommands() {
  std::vector<std::unique_ptr<Command>> commands;
  for (const auto make : {
           MakeInitCommand,      MakeProjectListCommand,    MakeProjectCreateCommand, MakeProjectUseCommand,
           MakeSourceAddCommand, MakeSourceListCommand,     MakeScanCommand,          MakeDiagnosticsCommand,
           MakeModelCommand,     MakeXrefCommand,           MakeFlowCommand,          MakeWhyCommand,
           MakeUsesCommand,      MakeFunctionCreateCommand, MakeRuleSetCreateCommand, MakeRuleCreateCommand,
           MakeListCommand,      MakeShowCommand,           MakeSetCommand,           MakeMoveCommand,
           MakeLogCommand,       MakeFetchCommand,          MakeSweepCommand,         MakeValidateCommand,
           MakeWorkbenchCommand, MakeCompletionCommand,     MakeManCommand,           MakeHelpCommand,
       }) {
    commands.push_back(make());
  }
  return commands;
}

std::string_view GroupSummary(std::string_view words) {
  struct Group {
    std::string_view words;
    std::string_view summary;
  };
  constexpr Group groups[] = {
      {"project", "The projects of the workspace"},
      {"source", "The source files that the catalogue knows"},
      {"function", "Business functions"},
      {"ruleset", "Rule sets"},
      {"rule", "Rules"},
  };
  for (const Group& group : groups) {
    if (group.words == words) return group.summary;
  }
  throw std::logic_error("The group of commands \"" + std::string(words) + "\" has no summary.");
}

}  // namespace qmrules::cli
