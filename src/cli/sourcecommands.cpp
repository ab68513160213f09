#include <fmt/format.h>

#include <CLI/App.hpp>

#include "catalogue/registeredsources.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"
#include "workbench/sources/sourcefolder.h"
#include "workbench/sources/sourceregistration.h"

namespace qmrules::cli {

namespace {

using workbench::Registration;

std::string_view OutcomeText(Registration::Outcome outcome) {
  switch (outcome) {
    case Registration::Outcome::Added:
      return "added";
    case Registration::Outcome::Updated:
      return "updated";
    case Registration::Outcome::Unchanged:
      break;
  }
  return "unchanged";
}

class SourceAddCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"source add", "Make the COBOL programs of files and folders known"}; }
  std::vector<std::string> Examples() const override {
    return {"source add policybilling/cobol", "source add old/pbrate01.cbl --as PBRATE01-OLD"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("PATH", paths_, "File, or folder with all folders below it")->type_name("")->required();
    app.add_option("--as", name_, "Name of the program, where its PROGRAM-ID is taken by another file")
        ->type_name("NAME");
    app.add_flag("--skip", skip_, "Leave out files that cannot be taken, instead of refusing all");
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const auto programs = Scan(context, host);
    if (programs.empty()) throw platform::Error("No COBOL program was found; name a file, or a folder with programs.");
    if (!name_.empty() && programs.size() != 1) {
      throw platform::Error(
          fmt::format("--as names one program, and {} were found; name the one file that it is for.", programs.size()));
    }
    TextTable table({"Program", "File", "Lines", "Outcome"});
    Json list = Json::array();
    Write(host, [&] {
      const std::string projectKey = host.ProjectObject()->ObjectID();
      for (const auto& program : programs) {
        const auto done = workbench::RegisterSource(host.Repository(), projectKey, program, name_);
        const std::string outcome(OutcomeText(done.outcome));
        table.Add({done.name, program.file, std::to_string(program.lines), outcome});
        list.push_back({{"key", done.key},
                        {"name", done.name},
                        {"file", program.file},
                        {"lines", program.lines},
                        {"outcome", outcome}});
      }
    });
    json_ ? PrintJson(context, list) : PrintTable(context, table);
    return kDone;
  }

 private:
  std::vector<workbench::ScannedProgram> Scan(Context& context, workbench::EmbeddedHost& host) const {
    std::vector<workbench::ScannedProgram> programs;
    std::vector<std::string> problems;
    for (const auto& path : paths_) {
      auto found = workbench::ScanSources({.root = host.Folder().SourceFolder(),
                                           .path = AbsolutePath(context.environment, path),
                                           .encoding = host.Folder().SourceEncoding(),
                                           .limits = {}});
      for (const auto& [file, text] : found.problems) problems.push_back(fmt::format("{}: {}", file, text));
      std::ranges::move(found.programs, std::back_inserter(programs));
    }
    if (problems.empty()) return programs;
    if (!skip_) {
      throw platform::Error(fmt::format(
          "{}\nNothing was registered; --skip leaves such files out and takes the others.", fmt::join(problems, "\n")));
    }
    for (const auto& problem : problems) context.environment.err << "qmrules: " << problem << '\n';
    return programs;
  }

  std::vector<std::string> paths_;
  std::string name_;
  bool skip_ = false;
  bool json_ = false;
};

class SourceListCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"source list", "List the sources of the project"}; }
  std::vector<std::string> Examples() const override { return {"source list"}; }
  void Declare(CLI::App& app) override { app.add_flag("--json", json_, kJsonHelp); }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    TextTable table({"Key", "Program", "Lines", "File"});
    Json list = Json::array();
    for (const auto& source : catalogue::RegisteredSources(host)) {
      table.Add({source.key, source.name, std::to_string(source.lines), source.file});
      list.push_back({{"key", source.key},
                      {"name", source.name},
                      {"language", source.language},
                      {"file", source.file},
                      {"lines", source.lines}});
    }
    if (json_) {
      PrintJson(context, list);
    } else if (!table.Empty()) {
      PrintTable(context, table);
    }
    return kDone;
  }

 private:
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeSourceAddCommand() {
  return std::make_unique<SourceAddCommand>();
}

std::unique_ptr<Command> MakeSourceListCommand() {
  return std::make_unique<SourceListCommand>();
}

}  // namespace qmrules::cli
