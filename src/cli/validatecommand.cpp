#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <algorithm>

#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/objectfinder.h"
#include "cli/output.h"
#include "cli/terminalprogress.h"
#include "cli/validationfiles.h"
#include "cli/workspacecommand.h"
#include "platform/diskfile.h"
#include "validation/validationoptions.h"
#include "validation/validationrun.h"

namespace qmrules::cli {

namespace {

using platform::KeyedCollection;
using validation::RuleFinding;
using validation::Verdict;

bool Stands(const RuleFinding& finding) {
  return finding.verdict == Verdict::Unchanged || finding.verdict == Verdict::NoSegment ||
         finding.verdict == Verdict::InPlace;
}

class ValidateCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"validate", "Look whether the segments of rules still stand at their lines, and repair those that moved"};
  }
  std::vector<std::string> Examples() const override {
    return {"validate --dry-run", "validate --action valid", "validate \"Billing/Late payment\" --action leave --json",
            "validate --dry-run --strict --junit rules.xml --sarif rules.sarif"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("KEY", keys_,
                   "The rules, as \"RULE#12\" or by their paths; a rule set or a function stands for all its rules. "
                   "Without it all rules in the rule sets of the project")
        ->type_name("");
    app.add_option(
           "--action", action_,
           "What happens to a rule whose text does not stand at its lines: leave, it becomes invalid; delete, it "
           "loses its segment; valid, the text is looked for in the file and the segment moves there. Without "
           "it the project's option tells")
        ->check(CLI::IsMember({validation::kLeave, validation::kDelete, validation::kRepair}));
    app.add_flag("--collapse-spaces", collapseSpaces_, "Take lines for the same that differ in runs of blanks only");
    app.add_flag("--dry-run", dryRun_, "Write nothing to the catalogue");
    app.add_flag("--changed", changedOnly_, "Leave out of the list the rules whose text stands at its lines");
    app.add_flag("--strict", strict_, "End with exit code 3 when a rule is not valid");
    app.add_option("--junit", junit_, "Write the verdicts to this file as JUnit's XML")->type_name("FILE");
    app.add_option("--sarif", sarif_, "Write the verdicts to this file as SARIF 2.1.0")->type_name("FILE");
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    validation::ValidationRequest request;
    request.ruleIDs = keys_.empty() ? RulesOfProject(host) : RulesOfKeys(host);
    request.action = action_.empty() ? validation::ReadValidationAction(host.ProjectOptions()) : action_;
    request.collapseSpaces = collapseSpaces_ || validation::ReadCollapseSpaces(host.ProjectOptions());
    request.writes = !dryRun_;
    request.wantsPlaces = true;
    request.wantsHints = true;
    request.wantsTexts = true;

    TerminalProgress progress(context.environment);
    validation::ValidationReport report;
    {
      const auto command = host.Repository().BeginCommand("validate");
      report = validation::ValidateRules({host, host.FileSystem(), host.Clock(), context.texts, host.Globals(), {}},
                                         request, &progress);
    }
    Findings findings;
    for (const RuleFinding& finding : report.findings) findings.push_back(&finding);
    std::ranges::sort(findings, {}, &RuleFinding::ruleID);
    if (!junit_.empty()) platform::WriteDiskFile(AbsolutePath(context.environment, junit_), JUnitText(findings));
    if (!sarif_.empty()) {
      platform::WriteDiskFile(AbsolutePath(context.environment, sarif_), SarifText(findings, QMRULES_VERSION));
    }
    Print(context, request, report, findings);
    return strict_ && !AreAllValid(request, report) ? kNotValid : kDone;
  }

 private:
  static void AddRules(platform::Fetch& fetch, std::string_view projectKey, KeyedCollection<std::string>& ids) {
    for (fetch.Execute(projectKey); !fetch.Eof(); fetch.MoveNext()) {
      catalogue::AddKeyed(ids, std::to_string(catalogue::IDField(fetch.Row(), "RuleID")));
    }
  }

  static KeyedCollection<std::string> RulesOfProject(workbench::EmbeddedHost& host) {
    KeyedCollection<std::string> ids;
    const auto fetch = catalogue::NewQuery(host.Repository());
    const auto rule = fetch->AddObject(false, catalogue::kRule, "ID:RuleID");
    const auto has = fetch->AddRelation("Has", false, "", rule);
    fetch->SetRoot(fetch->AddObject(true, catalogue::kRuleSet, "", {}, has));
    AddRules(*fetch, host.ProjectObject()->ObjectID(), ids);
    return ids;
  }

  KeyedCollection<std::string> RulesOfKeys(workbench::EmbeddedHost& host) const {
    KeyedCollection<std::string> ids;
    const ObjectFinder finder(host);
    for (const std::string& key : keys_) {
      const auto object = finder.Find(key);
      finder.RequireInProject(object);
      if (object.entity == catalogue::kRule) {
        catalogue::AddKeyed(ids, std::to_string(object.id));
        continue;
      }
      const auto fetch = catalogue::NewQuery(host.Repository());
      const platform::Filter own(fmt::format("ID={}", object.id));
      const auto rule = fetch->AddObject(false, catalogue::kRule, "ID:RuleID");
      const auto has = fetch->AddRelation("Has", false, "", rule);
      if (object.entity == catalogue::kRuleSet) {
        fetch->SetRoot(fetch->AddObject(false, catalogue::kRuleSet, "", own, has));
      } else {
        const auto set = fetch->AddObject(true, catalogue::kRuleSet, "", {}, has);
        const auto refers = fetch->AddRelation("Refers", false, "", set);
        const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "", {}, refers);
        const auto triggers = fetch->AddRelation("Triggers", false, "", call);
        fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "", own, triggers));
      }
      AddRules(*fetch, host.ProjectObject()->ObjectID(), ids);
    }
    return ids;
  }

  // As the rules stand in the catalogue now.
  static bool AreAllValid(const validation::ValidationRequest& request, const validation::ValidationReport& report) {
    return std::all_of(report.findings.begin(), report.findings.end(), [&](const RuleFinding& finding) {
      if (!request.writes) return Stands(finding);
      if (Stands(finding) && finding.verdict != Verdict::InPlace) return true;
      if (request.action == validation::kDelete) return true;
      return request.action == validation::kRepair && !finding.candidates.empty();
    });
  }

  void Print(Context& context, const validation::ValidationRequest& request, const validation::ValidationReport& report,
             const Findings& findings) const {
    Json list = Json::array();
    TextTable table({"Verdict", "Key", "Rule", "File", "Rows", "Place"});
    for (const RuleFinding* const entry : findings) {
      const RuleFinding& finding = *entry;
      if (changedOnly_ && Stands(finding)) continue;
      list.push_back(ToJson(finding));
      const bool hasRows = finding.verdict != Verdict::NoSegment;
      table.Add({VerdictName(finding.verdict), fmt::format("RULE#{}", finding.ruleID), finding.ruleName,
                 finding.fileName, hasRows ? fmt::format("{}-{}", finding.rows.FromRow, finding.rows.ToRow) : "",
                 PlaceText(finding)});
    }
    if (json_) {
      const auto& counts = report.counts;
      PrintJson(context, {{"action", request.action},
                          {"dryRun", dryRun_},
                          {"counts",
                           {{"rules", counts.rules},
                            {"correct", counts.correct},
                            {"noSegment", counts.noSegment},
                            {"validated", counts.validated},
                            {"notValidated", counts.notValidated}}},
                          {"rules", std::move(list)}});
      return;
    }
    if (!table.Empty()) PrintTable(context, table);
    PrintSummary(context, report);
  }

  // The message is made of CR LF lines, of which the first may be empty.
  void PrintSummary(Context& context, const validation::ValidationReport& report) const {
    std::string text;
    for (const char character : report.message) {
      if (character != '\r') text += character;
    }
    while (text.starts_with('\n')) text.erase(0, 1);
    if (!text.empty()) context.environment.out << text << '\n';
    if (dryRun_) context.environment.out << "Nothing was written.\n";
  }

  std::vector<std::string> keys_;
  std::string action_;
  std::string junit_;
  std::string sarif_;
  bool collapseSpaces_ = false;
  bool dryRun_ = false;
  bool changedOnly_ = false;
  bool strict_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeValidateCommand() {
  return std::make_unique<ValidateCommand>();
}

}  // namespace qmrules::cli
