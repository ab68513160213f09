#include <fmt/format.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <optional>
#include <variant>

#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/controlsession.h"
#include "cli/objectfinder.h"
#include "cli/output.h"
#include "cli/sourcesegment.h"
#include "cli/workspacecommand.h"
#include "editing/rules.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

class RuleCreateCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"rule create", "Make a rule in a rule set and print its key"}; }
  std::vector<std::string> Examples() const override {
    return {"rule create \"Grace period\" --ruleset Lapse --segment policybilling/cobol/pbbill01.cbl:437-460",
            "rule create Lapse --ruleset RULESET#4 --after \"Grace period\" --description \"After the grace period\""};
  }
  void Declare(CLI::App& app) override {
    app.add_option("NAME", name_, "Name of the rule")->type_name("")->required();
    app.add_option("--ruleset", ruleSet_, "The rule set, by name, path or key")->type_name("KEY")->required();
    app.add_option("--function", function_, "A business function that triggers the rule set, as a check")
        ->type_name("KEY");
    app.add_option("--after", after_, "The rule behind which it goes, by name or key; without it, the end")
        ->type_name("KEY");
    app.add_option("--segment", segment_, "Its lines: FILE:FROM-TO, the file being a source of the project")
        ->type_name("FILE:FROM-TO");
    app.add_option("--program", program_, "The program, where the file of the segment holds several")
        ->type_name("NAME");
    app.add_option("--description", description_, "Technical description")->type_name("TEXT");
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    std::optional<SegmentPlace> place;
    if (!segment_.empty()) place = ParseSegmentPlace(segment_);
    if (!place && !program_.empty()) throw UsageError("--program tells the program of a segment; give --segment too.");

    const ControlSession session(context, host);
    const ObjectFinder finder(host);
    std::int32_t id = 0;
    Write(host, [&] {
      const std::int32_t ruleSetID = RuleSet(finder);
      editing::NewRule wanted{.ruleSetID = ruleSetID,
                              .name = name_,
                              .description = description_,
                              .afterRuleID = after_.empty() ? 0 : finder.FindRuleOf(ruleSetID, after_).id,
                              .segment = {},
                              .attributeSchema = session.Control().SchemaElement()};
      if (place) wanted.segment = ReadSegment(host, context.environment, *place, program_);
      const auto outcome = editing::CreateRule(session.Editing(), wanted);
      if (const auto* refused = std::get_if<editing::Refused>(&outcome)) throw platform::Error(refused->notice.text);
      id = std::get<editing::Created>(outcome).id;
    });
    PrintKey(context, catalogue::MakeKey(catalogue::kRule, id), json_);
    return kDone;
  }

 private:
  std::int32_t RuleSet(const ObjectFinder& finder) const {
    const auto found = finder.FindRuleSet(ruleSet_);
    if (function_.empty()) return found.id;
    const auto function = finder.FindFunction(function_);
    const auto functions = finder.FunctionsOf(found.id);
    if (std::ranges::find(functions, function.id) == functions.end()) {
      throw platform::Error(
          fmt::format("{} is not triggered by {}; \"qmrules list\" shows the rule sets of each function.", found.Key(),
                      function.Key()));
    }
    return found.id;
  }

  std::string name_;
  std::string ruleSet_;
  std::string function_;
  std::string after_;
  std::string segment_;
  std::string program_;
  std::string description_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeRuleCreateCommand() {
  return std::make_unique<RuleCreateCommand>();
}

}  // namespace qmrules::cli
