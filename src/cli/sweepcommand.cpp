#include <CLI/App.hpp>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "shell/validitysweep.h"

namespace qmrules::cli {

namespace {

class SweepCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"sweep", "Mark the valid rules, of all projects, whose source file has changed or is missing"};
  }
  std::vector<std::string> Examples() const override { return {"sweep"}; }
  void Declare(CLI::App& app) override { app.add_flag("--json", json_, kJsonHelp); }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    shell::SweepCounts counts;
    Write(host, [&] {
      platform::SilentProgress progress;
      counts = shell::RunValiditySweep(host.Repository(), host.FileSystem(), host.Folder().SourceFolder(), progress);
    });
    if (json_) {
      PrintJson(
          context,
          {{"looked", counts.looked}, {"invalid", counts.invalid}, {"potentiallyInvalid", counts.potentiallyInvalid}});
      return kDone;
    }
    TextTable table;
    table.Add({"Rules looked at", std::to_string(counts.looked)});
    table.Add({"Invalid", std::to_string(counts.invalid)});
    table.Add({"Potentially invalid", std::to_string(counts.potentiallyInvalid)});
    PrintTable(context, table);
    return kDone;
  }

 private:
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeSweepCommand() {
  return std::make_unique<SweepCommand>();
}

}  // namespace qmrules::cli
