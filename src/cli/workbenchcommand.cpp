#include <fmt/format.h>

#include <CLI/App.hpp>
#include <filesystem>
#include <system_error>

#include "cli/commandlist.h"
#include "cli/commandtree.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

constexpr std::string_view kWorkbench = "qmrules-workbench";

// The desktop is a program of its own, so that the command line needs none of its libraries.
std::string WorkbenchProgram(const CliEnvironment& environment) {
  std::string path = fmt::format("{}/{}", environment.programFolder, kWorkbench);
  std::error_code failed;  // what cannot be looked at is not there
  if (std::filesystem::is_regular_file(path, failed)) return path;
  throw platform::Error(fmt::format(
      "The desktop is not installed: {} is missing; put the program {} there, which a build with Qt 6 makes.", path,
      kWorkbench));
}

class WorkbenchCommand final : public Command {
 public:
  CommandTitle Title() const override { return {"workbench", "Open the workspace in the desktop"}; }
  std::vector<std::string> Examples() const override { return {"workbench", "workbench policybilling"}; }
  void Declare(CLI::App& app) override {
    app.add_option("FOLDER", folder_,
                   "The workspace; without it the one of --workspace, or of the current folder or the nearest folder "
                   "above; where there is none, the desktop asks")
        ->type_name("");
  }
  int Run(Context& context) override {
    std::vector<std::string> arguments;
    if (const auto& language = context.tree.Options().language; !language.empty()) {
      arguments = {"--language", language};
    }
    const auto workspace =
        folder_.empty() ? FindWorkspace(context) : std::optional(AbsolutePath(context.environment, folder_));
    if (workspace) arguments.push_back(*workspace);
    return context.environment.runProgram(WorkbenchProgram(context.environment), arguments);
  }

 private:
  std::string folder_;
};

}  // namespace

std::unique_ptr<Command> MakeWorkbenchCommand() {
  return std::make_unique<WorkbenchCommand>();
}

}  // namespace qmrules::cli
