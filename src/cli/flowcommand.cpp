#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/filterprogram.h"
#include "cli/flowdiagram.h"
#include "cli/output.h"
#include "cli/programmodel.h"
#include "cli/sourcelines.h"
#include "cli/workspacecommand.h"
#include "platform/diskfile.h"
#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/codemodel/nodewalk.h"
#include "workbench/flow/flowlanguage.h"
#include "workbench/flow/openreturns.h"

namespace qmrules::cli {

namespace {

using workbench::codemodel::Entity;
using workbench::codemodel::KindWalk;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;
using workbench::flow::FlowGraph;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::RangeBodies;

class FlowCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"flow", "Draw which way a program can go"}; }
  std::vector<std::string> Examples() const override {
    return {"flow PBRATE01 --output rates.svg", "flow PBRATE01 --paragraph 2100-EDIT-TRANS --output edit.svg",
            "flow PBRATE01 --format dot"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("PROGRAM", program_, kProgramHelp)->type_name("")->required();
    app.add_option(
           "--paragraph", paragraph_,
           "Only this paragraph or section, statement by statement; \"A OF B\" for the A of a section or nested "
           "program B. Without it, all paragraphs and how they lead to each other")
        ->type_name("NAME");
    app.add_option("--format", format_, "svg, a picture drawn by Graphviz, or dot, its description for Graphviz")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"svg", "dot"}));
    app.add_option("--output", output_, "The file that is written; without it the result is printed")
        ->type_name("FILE");
    app.add_flag("--json", json_,
                 "Print the points of the flow and the ways between them as JSON, in place of a picture");
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override;

 private:
  NodeId FindLabel(const ModelImage& model) const;
  std::string Picture(const FlowPicture& picture, NodeId label, NodeId division) const;
  void Put(Context& context, const std::string& text) const;
  void TellWhatIsMissing(Context& context, const ModelImage& model, const RangeBodies& bodies, NodeId label) const;

  std::string program_, paragraph_, format_ = "svg", output_;
  bool json_ = false;
};

// What a label can be qualified by: the section that a paragraph is in, or the program.
std::string_view NameAround(const ModelImage& model, NodeId label) {
  const auto& parent = model.Nodes()[model.Nodes()[label].parent];
  return model.Text(parent.entity == Entity::Section ? parent.name : model.Units()[UnitAround(model, label)].name);
}

bool HasName(const ModelImage& model, NodeId label, std::string_view name, std::string_view around) {
  if (!shell::EqualIgnoringCase(model.Text(model.Nodes()[label].name), name)) return false;
  return around.empty() || shell::EqualIgnoringCase(NameAround(model, label), around) ||
         shell::EqualIgnoringCase(model.Text(model.Units()[UnitAround(model, label)].name), around);
}

// The label of --paragraph; 0 without it. A section goes before its own first paragraph, which has its name.
NodeId FlowCommand::FindLabel(const ModelImage& model) const {
  if (paragraph_.empty()) return 0;
  const std::string upper = shell::ToUpper(paragraph_);
  const auto of = upper.find(" OF ");
  const std::string name = upper.substr(0, of), around = of == std::string::npos ? "" : upper.substr(of + 4);
  const auto last = static_cast<NodeId>(model.Nodes().size() - 1);
  NodeId found = 0;
  std::vector<std::string> names;  // of all that are meant
  for (KindWalk walk(model, Entity::Label, 1, last); walk.Current() != 0; walk.MoveNext()) {
    const NodeId label = walk.Current();
    if (!HasName(model, label, name, around)) continue;
    if (found != 0 && model.Nodes()[label].parent == found) continue;
    if (found == 0) found = label;
    names.push_back(fmt::format("{} OF {}", name, NameAround(model, label)));
  }
  if (found == 0) {
    throw platform::Error(
        fmt::format("{0} has no paragraph {1}; \"qmrules model {0} --entity LABEL\" lists its paragraphs and sections.",
                    program_, paragraph_));
  }
  if (std::ranges::any_of(names, [&](const std::string& other) { return other != names.front(); })) {
    throw platform::Error(fmt::format("{} has several paragraphs {}: {}; name one of them so.", program_, paragraph_,
                                      fmt::join(names, ", ")));
  }
  return found;
}

Json ObjectAsJson(const ModelImage& model, NodeId node) {
  if (node == 0) return Json();
  const auto& record = model.Nodes()[node];
  return {{"key", fmt::format("{}#{}", NameOf(record.entity), node)},
          {"name", model.Text(record.name)},
          {"file", model.FileName(record.file)},
          {"row", record.firstRow}};
}

Json RangesAsJson(const ModelImage& model, const FlowGraph& flow) {
  Json list = Json::array();
  for (const auto& range : flow.Ranges()) {
    list.push_back({{"first", ObjectAsJson(model, range.first)},
                    {"last", ObjectAsJson(model, range.last)},
                    {"entry", range.entry},
                    {"exit", range.exit == workbench::flow::kNoPoint ? Json() : Json(range.exit)}});
  }
  return list;
}

// Those of the label, or all.
Json PointsAsJson(const ModelImage& model, const RangeBodies& bodies, NodeId label) {
  const FlowGraph& flow = bodies.Flow();
  Json list = Json::array();
  for (PointId id = 0; id < flow.Points().size(); ++id) {
    const auto& point = flow.Points()[id];
    if (label != 0 && (point.node < label || point.node > model.Nodes()[label].last)) continue;
    Json json = {{"id", id},
                 {"kind", NameOf(point.kind)},
                 {"object", ObjectAsJson(model, point.node)},
                 {"runs", !bodies.RangesWith(id).empty()}};
    if (point.kind == PointKind::Holds) json["sense"] = point.sense;
    if (point.kind == PointKind::Call) json["range"] = point.range;
    json["ways"] = Json::array();
    for (const auto& way : flow.WaysOut(id)) json["ways"].push_back({{"to", way.to}, {"kind", NameOf(way.kind)}});
    list.push_back(std::move(json));
  }
  return list;
}

Json GapsAsJson(const ModelImage& model, const RangeBodies& bodies) {
  Json list = Json::array();
  const auto add = [&](const workbench::flow::FlowGap& gap) {
    list.push_back({{"kind", NameOf(gap.kind)}, {"object", ObjectAsJson(model, gap.node)}});
  };
  for (const auto& gap : bodies.Flow().Gaps()) add(gap);
  for (const auto& gap : workbench::flow::OpenReturns(bodies)) add(gap);
  return list;
}

std::string FlowCommand::Picture(const FlowPicture& picture, NodeId label, NodeId division) const {
  std::string dot = label != 0 ? DrawLabel(picture, label) : DrawOverview(picture, division);
  if (format_ == "dot") return dot;
  try {
    return RunFilter("dot", {"-Tsvg"}, dot);
  } catch (const platform::Error& error) {
    throw platform::Error(
        fmt::format("The picture cannot be drawn: {} Install Graphviz, or ask for its description with --format dot.",
                    error.what()));
  }
}

void FlowCommand::Put(Context& context, const std::string& text) const {
  if (output_.empty()) {
    context.environment.out << text;
  } else {
    platform::WriteDiskFile(AbsolutePath(context.environment, output_), text);
  }
}

void FlowCommand::TellWhatIsMissing(Context& context, const ModelImage& model, const RangeBodies& bodies,
                                    NodeId label) const {
  std::vector<std::string_view> nested;
  for (const auto& unit : model.Units().subspan(1)) nested.push_back(model.Text(unit.name));
  if (label == 0 && !nested.empty()) {
    context.environment.err << fmt::format(
        "The programs nested in {} are not shown: {}. A paragraph P of one is shown by --paragraph \"P OF {}\".\n",
        program_, fmt::join(nested, ", "), nested.front());
  }
  if (!bodies.AreReturnsMatched()) {
    context.environment.err
        << "Too many PERFORM ranges of the program run through each other by GO TO to be told apart: "
           "paragraphs can be shown to run, or to fall into the next one, that never do.\n";
  }
}

int FlowCommand::RunIn(Context& context, workbench::EmbeddedHost& host) {
  const auto program = FindProgram(host, program_);
  const auto model = OpenImage(host, program);
  const NodeId label = FindLabel(*model);
  const std::uint32_t unit = label == 0 ? 0 : UnitAround(*model, label);
  const auto* language = workbench::flow::FlowLanguageOf(*model);
  if (language == nullptr)
    throw platform::Error(fmt::format("The flow of {} programs is not known.", model->Language()));
  const FlowGraph flow = language->BuildFlow(*model, unit);
  const RangeBodies bodies(flow);
  TellWhatIsMissing(context, *model, bodies, label);
  if (json_) {
    Put(context, JsonText({{"program", program.name},
                           {"returnsMatched", bodies.AreReturnsMatched()},
                           {"points", PointsAsJson(*model, bodies, label)},
                           {"ranges", RangesAsJson(*model, flow)},
                           {"gaps", GapsAsJson(*model, bodies)}}) +
                     "\n");
    return kDone;
  }
  SourceLines lines(host, *model);
  const FlowPicture picture{*model, bodies,
                            [&lines](std::uint16_t file, std::uint32_t row) { return lines.Row(file, row); }};
  Put(context, Picture(picture, label, model->Units()[unit].division));
  return kDone;
}

}  // namespace

std::unique_ptr<Command> MakeFlowCommand() {
  return std::make_unique<FlowCommand>();
}

}  // namespace qmrules::cli
