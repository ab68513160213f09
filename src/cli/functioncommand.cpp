#include <CLI/App.hpp>
#include <optional>
#include <variant>

#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/controlsession.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "editing/businessfunctions.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

class FunctionCreateCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"function create", "Make a business function and print its key"}; }
  std::vector<std::string> Examples() const override {
    return {"function create Billing --description \"Instalments, late fees and lapse\""};
  }
  void Declare(CLI::App& app) override {
    app.add_option("NAME", name_, "Name of the function; no other function of the workspace has it")
        ->type_name("")
        ->required();
    app.add_option("--description", description_, "Description")->type_name("TEXT");
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const ControlSession session(context, host);
    const auto editing = session.Editing();
    std::int32_t id = 0;
    std::string notice;
    Write(host, [&] {
      const auto outcome = editing::CreateBusinessFunction(editing, Wanted(editing));
      if (const auto* refused = std::get_if<editing::Refused>(&outcome)) throw platform::Error(refused->notice.text);
      if (const auto* created = std::get_if<editing::Created>(&outcome)) id = created->id;
      if (const auto* existing = std::get_if<editing::ExistingFunction>(&outcome)) {
        id = existing->id;
        notice = existing->notice.text;
      }
    });
    if (!notice.empty()) context.environment.err << "qmrules: " << notice << '\n';
    PrintKey(context, catalogue::MakeKey(catalogue::kBusinessFunction, id), json_);
    return kDone;
  }

 private:
  // The function for rules without a home keeps its own description unless another one is given.
  editing::NewBusinessFunction Wanted(const editing::EditingContext& editing) const {
    if (description_) return {name_, *description_};
    auto proposed = editing::ProposedFunction(editing, {name_, ""});
    return {name_, std::move(proposed.description)};
  }

  std::string name_;
  std::optional<std::string> description_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeFunctionCreateCommand() {
  return std::make_unique<FunctionCreateCommand>();
}

}  // namespace qmrules::cli
