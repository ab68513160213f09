#include "cli/workspacecommand.h"

#include <fmt/format.h>

#include <filesystem>

#include "cli/cli.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

std::string WorkspaceOf(const Context& context) {
  if (auto found = FindWorkspace(context)) return *std::move(found);
  throw platform::Error(
      fmt::format("There is no workspace in {} or a folder above it; make one with \"qmrules init\", or name one with "
                  "--workspace DIR.",
                  context.environment.currentFolder));
}

}  // namespace

std::string AbsolutePath(const CliEnvironment& environment, const std::string& path) {
  return (std::filesystem::path(environment.currentFolder) / path).string();
}

std::optional<std::string> FindWorkspace(const Context& context) {
  const auto& environment = context.environment;
  if (!context.workspace.empty()) return AbsolutePath(environment, context.workspace);
  if (const std::string named = environment.Variable("QMRULES_WORKSPACE"); !named.empty()) {
    return AbsolutePath(environment, named);
  }
  return workbench::WorkspaceFolder::FindUpwards(environment.currentFolder);
}

workbench::HostServices ServicesOf(const CliEnvironment& environment) {
  return {.clock = environment.clock,
          .userName = environment.userName,
          .settingsPath = environment.settingsPath,
          .registryPath = environment.registryPath,
          .connect = environment.connect};
}

int WorkspaceCommand::Run(Context& context) {
  workbench::EmbeddedHost host(WorkspaceOf(context), ServicesOf(context.environment));
  return RunIn(context, host);
}

void WorkspaceCommand::Write(workbench::EmbeddedHost& host, const std::function<void()>& writes) const {
  auto& repository = host.Repository();
  const auto command = repository.BeginCommand(Title().words);
  const auto transaction = repository.BeginTransaction();
  writes();
  transaction->Commit();
}

}  // namespace qmrules::cli
