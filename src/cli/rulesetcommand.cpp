#include <CLI/App.hpp>
#include <optional>
#include <variant>

#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/controlsession.h"
#include "cli/objectfinder.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "editing/rulesets.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

struct Made {
  std::int32_t id = 0;
  std::string notice;  // what the reader is told besides
};

// The first line: the second one asks whether to go on, which a command line does not.
std::string WithoutQuestion(const std::string& text) {
  return text.substr(0, text.find('\r'));
}

struct MadeOf {
  Made operator()(const editing::CreatedRuleSet& created) const { return {created.id, {}}; }
  Made operator()(const editing::ExistingRuleSet& existing) const {
    if (!existing.accepted) throw platform::Error(existing.notice.text);
    return {existing.id, existing.notice.text};
  }
  Made operator()(const editing::RuleSetQuestion& asked) const {
    throw platform::Error(WithoutQuestion(asked.question.text));
  }
  Made operator()(const editing::Refused& refused) const { throw platform::Error(refused.notice.text); }
};

class RuleSetCreateCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"ruleset create", "Make a rule set under a function and print its key"};
  }
  std::vector<std::string> Examples() const override {
    return {"ruleset create \"Late fees\" --function Billing",
            "ruleset create Lapse --function Billing --after \"Late fees\""};
  }
  void Declare(CLI::App& app) override {
    app.add_option("NAME", name_, "Name of the rule set; no other rule set of the workspace has it")
        ->type_name("")
        ->required();
    app.add_option("--function", function_, "The business function that triggers it, by name or key")
        ->type_name("KEY")
        ->required();
    app.add_option("--after", after_, "The rule set behind which it goes, by name or key; without it, the end")
        ->type_name("KEY");
    app.add_option("--description", description_, "Description")->type_name("TEXT");
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const ControlSession session(context, host);
    const auto editing = session.Editing();
    const ObjectFinder finder(host);
    Made made;
    Write(host, [&] {
      const auto functionID = finder.FindFunction(function_).id;
      made = std::visit(MadeOf{}, editing::CreateRuleSet(editing, {.functionID = functionID,
                                                                   .name = name_,
                                                                   .description = Description(editing),
                                                                   .afterRuleSetID = After(finder, functionID)}));
    });
    if (!made.notice.empty()) context.environment.err << "qmrules: " << made.notice << '\n';
    PrintKey(context, catalogue::MakeKey(catalogue::kRuleSet, made.id), json_);
    return kDone;
  }

 private:
  std::int32_t After(const ObjectFinder& finder, std::int32_t functionID) const {
    if (after_.empty()) return 0;
    const auto after = finder.FindRuleSet(after_);
    const auto functions = finder.FunctionsOf(after.id);
    if (std::ranges::find(functions, functionID) == functions.end()) {
      throw platform::Error(after.Key() + " is not triggered by " +
                            catalogue::MakeKey(catalogue::kBusinessFunction, functionID) +
                            "; \"qmrules list\" shows the rule sets of each function.");
    }
    return after.id;
  }

  // The rule set for rules without a home keeps its own description unless another one is given.
  std::string Description(const editing::EditingContext& editing) const {
    if (description_) return *description_;
    if (name_ != editing.globals.UnassignedRSName) return {};
    const auto existing = editing.Repository().FindObject(catalogue::kRuleSet, name_);
    return existing ? existing->Attrs("Description").Text() : editing.globals.UnassignedRSDescr;
  }

  std::string name_;
  std::string function_;
  std::string after_;
  std::optional<std::string> description_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeRuleSetCreateCommand() {
  return std::make_unique<RuleSetCreateCommand>();
}

}  // namespace qmrules::cli
