#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "cli/command.h"

// The commands of the program.
//
// To add one, touch these files:
//   the command's own .cpp file, a class derived from Command or WorkspaceCommand in an unnamed namespace
//   commandlist.h     its Make function, below
//   commandlist.cpp   its line in MakeCommands, in the place where the help shows it
//   CMakeLists.txt    its file
//   docs/cli.md       anew, from "qmrules man --markdown"
// Help, completion scripts and manual follow from what the command declares.
namespace qmrules::cli {

std::unique_ptr<Command> MakeInitCommand();
std::unique_ptr<Command> MakeProjectListCommand();
std::unique_ptr<Command> MakeProjectCreateCommand();
std::unique_ptr<Command> MakeProjectUseCommand();
std::unique_ptr<Command> MakeSourceAddCommand();
std::unique_ptr<Command> MakeSourceListCommand();
std::unique_ptr<Command> MakeScanCommand();
std::unique_ptr<Command> MakeDiagnosticsCommand();
std::unique_ptr<Command> MakeModelCommand();
std::unique_ptr<Command> MakeXrefCommand();
std::unique_ptr<Command> MakeFlowCommand();
std::unique_ptr<Command> MakeWhyCommand();
std::unique_ptr<Command> MakeUsesCommand();
std::unique_ptr<Command> MakeFunctionCreateCommand();
std::unique_ptr<Command> MakeRuleSetCreateCommand();
std::unique_ptr<Command> MakeRuleCreateCommand();
std::unique_ptr<Command> MakeListCommand();
std::unique_ptr<Command> MakeShowCommand();
std::unique_ptr<Command> MakeSetCommand();
std::unique_ptr<Command> MakeMoveCommand();
std::unique_ptr<Command> MakeLogCommand();
std::unique_ptr<Command> MakeFetchCommand();
std::unique_ptr<Command> MakeSweepCommand();
std::unique_ptr<Command> MakeValidateCommand();
std::unique_ptr<Command> MakeWorkbenchCommand();
std::unique_ptr<Command> MakeCompletionCommand();
std::unique_ptr<Command> MakeManCommand();
std::unique_ptr<Command> MakeHelpCommand();

// All commands, in the order of the help.
std::vector<std::unique_ptr<Command>> MakeCommands();

// One line on a group of commands, by the words that they begin with. Throws std::logic_error for an unknown group.
std::string_view GroupSummary(std::string_view words);

}  // namespace qmrules::cli
