#include "cli/chaincommand.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "cli/chainprinting.h"
#include "cli/cli.h"
#include "cli/programlibrary.h"
#include "cli/programmodel.h"
#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/codemodel/crossreference.h"

namespace qmrules::cli {

using platform::Error;
using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;

namespace {

// A statement with more nodes holds others: it is not what a row in the midst of it is about.
constexpr NodeId kMostNodesAround = 200;

bool IsMeant(std::string_view file, std::string_view asked) {
  return file == asked || file.ends_with("/" + std::string(asked));
}

// The variables of the statements on a row: those that stand on the row itself or, where there are none, those of
// statements that have begun above it.
std::vector<NodeId> VariablesAt(const ModelImage& model, const std::string& file, std::uint32_t row) {
  std::vector<NodeId> onRow;
  std::vector<NodeId> around;
  for (const NodeId node : model.NodesOf(Entity::Var)) {
    const auto& record = model.Nodes()[node];
    const NodeId statement = StatementAround(model, node);
    if (statement == 0 || !IsMeant(model.FileName(record.file), file)) continue;
    const auto& whole = model.Nodes()[statement];
    if (record.firstRow == row) onRow.push_back(node);
    const bool isShort = whole.last - statement < kMostNodesAround;
    if (isShort && whole.firstRow <= row && row <= whole.lastRow) around.push_back(node);
  }
  return onRow.empty() ? around : onRow;
}

std::vector<NodeId> Named(const ModelImage& model, const std::vector<NodeId>& nodes, const std::string& name) {
  const auto meant = FindCrossReference(model, name);
  std::vector<NodeId> named;
  for (const NodeId node : nodes) {
    if (std::ranges::binary_search(meant.occurrences, node)) named.push_back(node);
  }
  return named;
}

struct AskedLine {
  std::string file;
  std::uint32_t row = 0;
};

AskedLine ParseLine(const std::string& text) {
  const std::size_t colon = std::min(text.rfind(':'), text.size());
  const char* const end = text.data() + text.size();
  AskedLine line{text.substr(0, colon), 0};
  const auto parsed = std::from_chars(text.data() + std::min(colon + 1, text.size()), end, line.row);
  if (line.file.empty() || parsed.ec != std::errc() || parsed.ptr != end || line.row == 0) {
    throw UsageError(
        fmt::format("\"{}\" names no line: write FILE:LINE, with lines from 1, as \"billing.cbl:437\".", text));
  }
  std::ranges::replace(line.file, '\\', '/');
  return line;
}

std::string NamesOf(const ModelImage& model, const std::vector<NodeId>& nodes) {
  std::set<std::string_view> names;
  for (const NodeId node : nodes) names.insert(model.Text(model.Nodes()[node].name));
  return fmt::format("{}", fmt::join(names, ", "));
}

}  // namespace

void ChainCommand::Declare(CLI::App& app) {
  app.add_option("PLACE", place_, "A line as FILE:LINE; the file may be named by its end")->type_name("")->required();
  app.add_option("NAME", name_, "A variable of the statement there; \"A OF B\" for the A of a group B")
      ->type_name("")
      ->required();
  app.add_option("--program", program_, "The program, for a line of a copybook or of a file with several")
      ->type_name("NAME");
  app.add_option("--depth", depth_, "Follow no more than this number of links")
      ->type_name("NUMBER")
      ->check(CLI::Range(std::size_t{1}, ChainTreeBuilder::kDeepest).description(""));
  app.add_flag("--json", json_, kJsonHelp);
}

std::vector<catalogue::RegisteredSource> ChainCommand::Candidates(workbench::EmbeddedHost& host,
                                                                  const std::string& file) const {
  if (!program_.empty()) return {FindProgram(host, program_)};
  auto sources = catalogue::RegisteredSources(host);
  std::erase_if(sources, [&](const auto& source) { return !IsMeant(source.file, file); });
  if (!sources.empty()) return sources;
  throw Error(
      fmt::format("{} is no source of the project; \"qmrules source list\" shows its sources, \"qmrules scan\" finds "
                  "new ones. For a line of a copybook, name the program with --program.",
                  file));
}

ChainCommand::Found ChainCommand::Find(workbench::EmbeddedHost& host) const {
  const auto [file, row] = ParseLine(place_);
  std::string names;
  for (const auto& source : Candidates(host, file)) {
    auto model = OpenImage(host, source);
    const auto variables = VariablesAt(*model, file, row);
    auto occurrences = Named(*model, variables, name_);
    if (!occurrences.empty()) return {source, std::move(model), std::move(occurrences)};
    if (names.empty()) names = NamesOf(*model, variables);
  }
  if (names.empty()) {
    const std::string of = program_.empty() ? std::string() : fmt::format(" of {}", program_);
    throw Error(fmt::format("There is no statement{} with variables at {}:{}.", of, file, row));
  }
  throw Error(fmt::format("The statement at {}:{} has no {}; it has {}.", file, row, name_, names));
}

int ChainCommand::RunIn(Context& context, workbench::EmbeddedHost& host) {
  const Found found = Find(host);
  ProgramLibrary library(host);
  workbench::flow::ProgramNetwork network([&](std::string_view name) { return library.Open(name); },
                                          [&](std::string_view name) { return library.CallersOf(name); });
  ChainPrinter printer(host);
  std::ostringstream text;  // so that a source that cannot be read leaves no half answer
  Json list = Json::array();
  for (const NodeId occurrence : found.occurrences) {
    auto& program = network.Add(found.model, UnitAround(*found.model, occurrence));
    ChainTreeBuilder builder(network, direction_, depth_);
    builder.Add(program, occurrence);
    const ChainTree tree = builder.Take();
    if (json_) {
      Json json = printer.AsJson(tree);
      json["occurrence"] = printer.PlaceAsJson(program, occurrence);
      list.push_back(std::move(json));
      continue;
    }
    if (occurrence != found.occurrences.front()) text << '\n';
    text << printer.Occurrence(program, occurrence) << '\n';
    printer.Print(text, tree);
  }
  if (json_) {
    PrintJson(context, list);
  } else {
    PrintGaps(context, found.source, found.model->Head().gaps);
    context.environment.out << text.view();
  }
  return kDone;
}

}  // namespace qmrules::cli
