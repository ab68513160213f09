#include <CLI/App.hpp>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/workspacecommand.h"

namespace qmrules::cli {

namespace {

class InitCommand final : public Command {
 public:
  CommandTitle Title() const override { return {"init", "Make a workspace with a catalogue and its first project"}; }
  std::vector<std::string> Examples() const override {
    return {"init --project \"Policy Billing\"", "init ~/billing --project Billing --encoding IBM1047"};
  }

  void Declare(CLI::App& app) override {
    app.add_option("DIR", folder_, "The folder of the sources; the current one when none is named")->type_name("");
    app.add_option("--project", project_, "Name of the first project")->type_name("NAME")->required();
    app.add_option(
           "--encoding", encoding_,
           "Encoding of the sources, such as SHIFT_JIS or IBM1047; without it UTF-8 and ISO-8859-1 are told apart")
        ->type_name("NAME");
  }

  int Run(Context& context) override {
    const std::string& named = folder_.empty() ? context.workspace : folder_;
    const auto workspace = workbench::EmbeddedHost::CreateWorkspace(
        {.folder = AbsolutePath(context.environment, named), .projectName = project_, .sourceEncoding = encoding_},
        ServicesOf(context.environment));
    context.environment.out << workspace.SourceFolder() << '\n';
    return kDone;
  }

 private:
  std::string folder_;
  std::string project_;
  std::string encoding_;
};

}  // namespace

std::unique_ptr<Command> MakeInitCommand() {
  return std::make_unique<InitCommand>();
}

}  // namespace qmrules::cli
