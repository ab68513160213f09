#include <CLI/App.hpp>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/displaywidth.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"

namespace qmrules::cli {

namespace {

class ProjectListCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"project list", "List the projects; \"*\" marks the current one"}; }
  std::vector<std::string> Examples() const override { return {"project list"}; }
  void Declare(CLI::App& app) override { app.add_flag("--json", json_, kJsonHelp); }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const std::string& current = host.Folder().CurrentProject();
    Json list = Json::array();
    for (const std::string& name : host.Folder().Projects()) {
      list.push_back({{"name", name}, {"current", name == current}});
      if (!json_) context.environment.out << (name == current ? "* " : "  ") << OneLine(name) << '\n';
    }
    if (json_) PrintJson(context, list);
    return kDone;
  }

 private:
  bool json_ = false;
};

class ProjectCreateCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"project create", "Make a project and make it the current one"}; }
  std::vector<std::string> Examples() const override { return {"project create Claims"}; }
  void Declare(CLI::App& app) override {
    app.add_option("NAME", name_, "Name of the project")->type_name("")->required();
  }

 protected:
  int RunIn(Context&, workbench::EmbeddedHost& host) override {
    host.CreateProject(name_);
    return kDone;
  }

 private:
  std::string name_;
};

class ProjectUseCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"project use", "Make a project the current one"}; }
  std::vector<std::string> Examples() const override { return {"project use \"Policy Billing\""}; }
  void Declare(CLI::App& app) override {
    app.add_option("NAME", name_, "Name of the project")->type_name("")->required();
  }

 protected:
  int RunIn(Context&, workbench::EmbeddedHost& host) override {
    host.UseProject(name_);
    return kDone;
  }

 private:
  std::string name_;
};

}  // namespace

std::unique_ptr<Command> MakeProjectListCommand() {
  return std::make_unique<ProjectListCommand>();
}

std::unique_ptr<Command> MakeProjectCreateCommand() {
  return std::make_unique<ProjectCreateCommand>();
}

std::unique_ptr<Command> MakeProjectUseCommand() {
  return std::make_unique<ProjectUseCommand>();
}

}  // namespace qmrules::cli
