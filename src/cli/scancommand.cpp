#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <algorithm>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/displaywidth.h"
#include "cli/output.h"
#include "cli/programmodel.h"
#include "cli/terminalprogress.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"
#include "workbench/host/workspacescan.h"

namespace qmrules::cli {

namespace {

using workbench::ScannedModel;
using workbench::ScanReport;
using Outcome = ScannedModel::Outcome;

constexpr int kMostJobs = 256;

std::string_view NameOf(Outcome outcome) {
  constexpr std::string_view names[] = {"added", "updated", "unchanged", "missing", "failed"};
  return names[static_cast<std::size_t>(outcome)];
}

// The sums of one scan.
struct Totals {
  explicit Totals(const ScanReport& report)
      : scanned(report.Count(Outcome::Added) + report.Count(Outcome::Updated)),
        unchanged(report.Count(Outcome::Unchanged)),
        missing(report.Count(Outcome::Missing)),
        failed(report.Count(Outcome::Failed)) {
    for (const auto& program : report.programs) {
      gaps += program.gaps;
      warnings += program.warnings;
    }
  }
  std::size_t scanned = 0, unchanged = 0, missing = 0, failed = 0;
  std::size_t gaps = 0, warnings = 0;
};

// "11 programs scanned, 0 unchanged: 0 gaps, 2 warnings; see "qmrules diagnostics"."
std::string SummaryOf(const Totals& totals) {
  std::string text = fmt::format("{} scanned, {} unchanged", Counted(totals.scanned, "program"), totals.unchanged);
  if (totals.missing > 0) text += fmt::format(", {} missing", totals.missing);
  if (totals.failed > 0) text += fmt::format(", {} failed", totals.failed);
  text += fmt::format(": {}, {}", Counted(totals.gaps, "gap"), Counted(totals.warnings, "warning"));
  return text + (totals.gaps + totals.warnings > 0 ? "; see \"qmrules diagnostics\"." : ".");
}

Json AsJson(const ScannedModel& program) {
  Json json{{"key", program.key},          {"name", program.name},
            {"file", program.file},        {"outcome", NameOf(program.outcome)},
            {"lines", program.rows},       {"gaps", program.gaps},
            {"warnings", program.warnings}};
  if (!program.problem.empty()) json["problem"] = program.problem;
  return json;
}

class ScanCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"scan", "Make the code models of programs, as far as their sources have changed"};
  }
  std::vector<std::string> Examples() const override {
    return {"scan", "scan policybilling/cobol --copybooks policybilling/copybooks", "scan --force --jobs 2 --json"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("PATH", paths_,
                   "File, or folder with all folders below it; without one the whole workspace and all known sources")
        ->type_name("");
    app.add_option("--copybooks", copybooks_,
                   "The folders of copybooks, in the order in which they are searched behind the program's own folder; "
                   "the project remembers them. \"\" goes back to searching every folder with copybooks")
        ->type_name("DIR")
        ->expected(1, -1);
    app.add_option("--format", format_,
                   "Form of the source lines, which the project remembers; auto, at first, tells it from each file")
        ->check(CLI::IsMember({"auto", "fixed", "wide", "free"}));
    app.add_option("--jobs", jobs_, "How many files are worked on at a time; 0, without the option, one for each core")
        ->type_name("N")
        ->check(CLI::Range(0, kMostJobs).description(""));
    app.add_flag("--force", force_, "Make every model anew");
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    workbench::WorkspaceScan scan;
    for (const auto& path : paths_) scan.paths.push_back(AbsolutePath(context.environment, path));
    scan.copybookFolders = CopybookFolders(context);
    if (!format_.empty()) scan.format = format_;
    scan.jobs = jobs_;
    scan.force = force_;
    TerminalProgress progress(context.environment);
    const auto report = ScanWorkspace(host, scan, progress);
    TellProblems(context, report);
    if (report.programs.empty() && report.problems.empty() && !report.cancelled) {
      throw platform::Error("No COBOL program was found; name a file, or a folder with programs.");
    }
    json_ ? PrintAsJson(context, report) : PrintAsText(context, report);
    if (report.cancelled) {
      context.environment.err << "qmrules: The scan was stopped; run it again to go on.\n";
    }
    return report.cancelled || report.Count(Outcome::Failed) > 0 ? kFailed : kDone;
  }

 private:
  std::optional<std::vector<std::string>> CopybookFolders(const Context& context) const {
    if (copybooks_.empty()) return std::nullopt;
    std::vector<std::string> folders;
    for (const auto& folder : copybooks_) {
      if (!folder.empty()) folders.push_back(AbsolutePath(context.environment, folder));
    }
    return folders;
  }

  static void TellProblems(Context& context, const ScanReport& report) {
    const auto tell = [&](const std::string& file, const std::string& text) {
      context.environment.err << "qmrules: " << OneLine(fmt::format("{}: {}", file, text)) << '\n';
    };
    for (const auto& problem : report.problems) tell(problem.file, problem.text);
    for (const auto& program : report.programs) {
      if (program.outcome == Outcome::Failed) tell(program.file, program.problem);
    }
  }

  // What has not changed is counted only.
  static void PrintAsText(Context& context, const ScanReport& report) {
    TextTable table({"Program", "File", "Lines", "Outcome", "Gaps", "Warnings"});
    for (const auto& program : report.programs) {
      if (program.outcome == Outcome::Unchanged) continue;
      const bool hasModel = program.outcome == Outcome::Added || program.outcome == Outcome::Updated;
      const auto counted = [&](std::uint32_t count) { return hasModel ? std::to_string(count) : std::string(); };
      table.Add({program.name, program.file, counted(program.rows), std::string(NameOf(program.outcome)),
                 counted(program.gaps), counted(program.warnings)});
    }
    if (!table.Empty()) PrintTable(context, table);
    context.environment.out << SummaryOf(Totals(report)) << '\n';
  }

  static void PrintAsJson(Context& context, const ScanReport& report) {
    const Totals totals(report);
    Json programs = Json::array();
    for (const auto& program : report.programs) programs.push_back(AsJson(program));
    PrintJson(context, {{"programs", std::move(programs)},
                        {"scanned", totals.scanned},
                        {"unchanged", totals.unchanged},
                        {"missing", totals.missing},
                        {"failed", totals.failed},
                        {"gaps", totals.gaps},
                        {"warnings", totals.warnings},
                        {"stopped", report.cancelled}});
  }

  std::vector<std::string> paths_;
  std::vector<std::string> copybooks_;
  std::string format_;
  int jobs_ = 0;
  bool force_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeScanCommand() {
  return std::make_unique<ScanCommand>();
}

}  // namespace qmrules::cli
