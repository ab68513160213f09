#include "cli/chaincommand.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/chainprinting.h"
#include "cli/cli.h"
#include "cli/programlibrary.h"
#include "cli/programmodel.h"
#include "cli/sourcesegment.h"
#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/codemodel/crossreference.h"

namespace qmrules::cli {

using platform::Error;
using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;

namespace {

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
    if (whole.firstRow <= row && row <= whole.lastRow && whole.last - statement < 200) around.push_back(node);
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

// The innermost program that the node is in.
std::uint32_t UnitAround(const ModelImage& model, NodeId node) {
  std::uint32_t found = 0;
  for (std::uint32_t unit = 0; unit < model.Units().size(); ++unit) {
    if (model.Units()[unit].firstNode <= node && node <= model.Units()[unit].lastNode) found = unit;
  }
  return found;
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
  throw Error(fmt::format(
      "{} is no source of the project; \"qmrules source list\" shows its sources. For a line of a copybook, "
      "name the program with --program.",
      file));
}

ChainCommand::Found ChainCommand::Find(workbench::EmbeddedHost& host) const {
  const SegmentPlace place = ParseSegmentPlace(place_);
  const auto row = static_cast<std::uint32_t>(place.fromRow);
  std::string file = place.file;
  std::ranges::replace(file, '\\', '/');
  std::string names;
  for (const auto& source : Candidates(host, file)) {
    auto model = OpenImage(host, source);
    const auto variables = VariablesAt(*model, file, row);
    auto occurrences = Named(*model, variables, name_);
    if (!occurrences.empty()) return {source, std::move(model), std::move(occurrences)};
    if (names.empty()) names = NamesOf(*model, variables);
  }
  if (names.empty()) throw Error(fmt::format("There is no statement with variables at {}:{}.", file, row));
  throw Error(fmt::format("The statement at {}:{} has no {}; it has {}.", file, row, name_, names));
}

int ChainCommand::RunIn(Context& context, workbench::EmbeddedHost& host) {
  const Found found = Find(host);
  ProgramLibrary library(host);
  workbench::flow::ProgramNetwork network([&](std::string_view name) { return library.Open(name); },
                                          [&](std::string_view name) { return library.CallersOf(name); });
  ChainPrinter printer(host);
  if (!json_) PrintGaps(context, found.source, found.model->Head().gaps);
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
    if (occurrence != found.occurrences.front()) context.environment.out << '\n';
    context.environment.out << printer.Occurrence(program, occurrence) << '\n';
    printer.Print(context.environment.out, tree);
  }
  if (json_) PrintJson(context, list);
  return kDone;
}

}  // namespace qmrules::cli
