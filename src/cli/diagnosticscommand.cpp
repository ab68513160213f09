#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <set>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/displaywidth.h"
#include "cli/output.h"
#include "cli/programmodel.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

using workbench::codemodel::Diagnostic;

// "FILE:ROW:COLUMN: SEVERITY: TEXT"; without row and column where the file as a whole is meant.
std::string LineOf(const Diagnostic& diagnostic) {
  const std::string place = diagnostic.row == 0
                                ? diagnostic.file
                                : fmt::format("{}:{}:{}", diagnostic.file, diagnostic.row, diagnostic.column);
  return OneLine(fmt::format("{}: {}: {}", place, NameOf(diagnostic.severity), diagnostic.text));
}

class DiagnosticsCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"diagnostics", "Show what scanning has found wrong with the programs"};
  }
  std::vector<std::string> Examples() const override {
    return {"diagnostics", "diagnostics PBRATE01", "diagnostics --severity gap --json"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("PROGRAM", program_, std::string(kProgramHelp) + "; without it all programs")->type_name("");
    app.add_option("--severity", severity_,
                   "Only these: gap, a piece of the program is not in its model; warning, the model is whole, the text "
                   "is not what the language asks for; note")
        ->check(CLI::IsMember({"gap", "warning", "note"}));
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    if (!program_.empty()) {
      const auto program = FindProgram(host, program_);
      RequireModel(program);
      Take(host, program);
    } else {
      TakeAll(context, host);
    }
    if (json_) {
      PrintJson(context, list_);
      return kDone;
    }
    for (const auto& line : lines_) context.environment.out << line << '\n';
    return kDone;
  }

 private:
  void TakeAll(Context& context, workbench::EmbeddedHost& host) {
    for (const auto& program : catalogue::RegisteredSources(host)) {
      try {
        RequireModel(program);
        const auto head = workbench::codemodel::ReadModelHead(host.PathOf(program.modelFile));
        if (head.gaps + head.warnings + head.notes > 0) Take(host, program);
      } catch (const platform::Error& failure) {
        context.environment.err << "qmrules: " << OneLine(failure.what()) << '\n';
      }
    }
  }

  void Take(workbench::EmbeddedHost& host, const catalogue::RegisteredSource& program) {
    for (const auto& diagnostic : OpenImage(host, program)->ListDiagnostics()) {
      if (!severity_.empty() && NameOf(diagnostic.severity) != severity_) continue;
      // What is wrong in a copybook is found in every program that copies it, and told once.
      std::string line = LineOf(diagnostic);
      if (told_.insert(line).second) lines_.push_back(std::move(line));
      list_.push_back({{"program", program.name},
                       {"key", program.key},
                       {"file", diagnostic.file},
                       {"row", diagnostic.row},
                       {"column", diagnostic.column},
                       {"severity", NameOf(diagnostic.severity)},
                       {"text", diagnostic.text}});
    }
  }

  std::string program_;
  std::string severity_;
  bool json_ = false;
  std::set<std::string> told_;
  std::vector<std::string> lines_;
  Json list_ = Json::array();
};

}  // namespace

std::unique_ptr<Command> MakeDiagnosticsCommand() {
  return std::make_unique<DiagnosticsCommand>();
}

}  // namespace qmrules::cli
