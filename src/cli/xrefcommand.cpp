#include <fmt/format.h>

#include <CLI/App.hpp>
#include <memory>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/output.h"
#include "cli/programmodel.h"
#include "cli/sourcelines.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"
#include "workbench/codemodel/crossreference.h"

namespace qmrules::cli {

namespace {

using workbench::codemodel::CrossReference;
using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;

constexpr std::size_t kMostSimilarNames = 3;

class XrefCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"xref", "Show where a name of a program is declared and used"}; }
  std::vector<std::string> Examples() const override {
    return {"xref PBRATE01 WS-NET-PREM", "xref PBRATE01 \"PM-STATE OF PM-POLICY-REC\" --json"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("PROGRAM", program_, kProgramHelp)->type_name("")->required();
    app.add_option("NAME", name_,
                   "Data item, condition name, index, file, paragraph or section; \"A OF B\" for the A of a group B")
        ->type_name("")
        ->required();
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const auto program = FindProgram(host, program_);
    const auto model = OpenImage(host, program);
    const auto found = FindCrossReference(*model, name_);
    if (found.declarations.empty() && found.occurrences.empty()) throw platform::Error(UnknownName(*model, program));
    SourceLines lines(host, *model);
    if (json_) {
      PrintJson(context, {{"program", program.name},
                          {"gaps", model->Head().gaps},
                          {"declarations", DeclarationsAsJson(*model, found, lines)},
                          {"occurrences", OccurrencesAsJson(*model, found, lines)}});
      return kDone;
    }
    PrintGaps(context, program, model->Head().gaps);
    PrintDeclarations(context, *model, found);
    PrintOccurrences(context, *model, found, lines);
    return kDone;
  }

 private:
  std::string UnknownName(const ModelImage& model, const catalogue::RegisteredSource& program) const {
    std::string text = fmt::format("{} has no name {}", program.name, name_);
    const auto similar = FindSimilarNames(model, name_, kMostSimilarNames);
    if (similar.empty()) {
      return text + fmt::format("; \"qmrules model {} --entity DECL\" lists its data.", program.name);
    }
    return text + fmt::format("; much like it: {}.", fmt::join(similar, ", "));
  }

  static std::string Key(const ModelImage& model, NodeId node) {
    return fmt::format("{}#{}", NameOf(model.Nodes()[node].entity), node);
  }
  static std::string Place(const ModelImage& model, NodeId node) {
    const auto& record = model.Nodes()[node];
    return fmt::format("{}:{}", model.FileName(record.file), record.firstRow);
  }
  // The statement's verb, the type of a port, or the kind of what is around an occurrence that stands in no statement.
  static std::string Statement(const ModelImage& model, NodeId node) {
    const NodeId statement = StatementAround(model, node);
    if (statement != 0) {
      const auto& record = model.Nodes()[statement];
      if (record.entity != Entity::Port) return std::string(model.Text(record.name));
      if ((record.flags & workbench::codemodel::kPortUsing) != 0) return "USING";
      return (record.flags & workbench::codemodel::kPortReturn) != 0 ? "RETURN" : "CALL";
    }
    const NodeId parent = model.Nodes()[node].parent;
    return parent == 0 ? std::string() : std::string(NameOf(model.Nodes()[parent].entity));
  }

  static void PrintDeclarations(Context& context, const ModelImage& model, const CrossReference& found) {
    TextTable table({"Key", "Level", "Name", "Picture", "Offset", "Size", "Declared at"});
    for (const NodeId node : found.declarations) {
      const auto& record = model.Nodes()[node];
      std::vector<std::string> cells{Key(model, node),  "", std::string(model.Text(record.name)), "", "", "",
                                     Place(model, node)};
      if (record.entity == Entity::Decl) {
        const auto& decl = model.Decl(node);
        if (decl.level != 0) cells[1] = fmt::format("{:02}", decl.level);
        cells[3] = model.Text(decl.picture);
        cells[4] = std::to_string(decl.offset);
        cells[5] = std::to_string(decl.size);
      }
      table.Add(std::move(cells));
    }
    if (!table.Empty()) PrintTable(context, table);
  }

  static void PrintOccurrences(Context& context, const ModelImage& model, const CrossReference& found,
                               SourceLines& lines) {
    if (!found.declarations.empty()) context.environment.out << '\n';
    TextTable table({"Used at", "Usage", "Statement", "Text"});
    for (const NodeId node : found.occurrences) {
      const auto& record = model.Nodes()[node];
      table.Add({Place(model, node), std::string(NameOf(record.usage)), Statement(model, node),
                 lines.Row(record.file, record.firstRow)});
    }
    if (table.Empty()) {
      context.environment.out << "It is not used.\n";
    } else {
      PrintTable(context, table);
    }
  }

  static Json PlaceAsJson(const ModelImage& model, NodeId node, SourceLines& lines) {
    const auto& record = model.Nodes()[node];
    return {{"key", Key(model, node)},
            {"name", model.Text(record.name)},
            {"file", model.FileName(record.file)},
            {"row", record.firstRow},
            {"text", lines.Row(record.file, record.firstRow)}};
  }

  static Json DeclarationsAsJson(const ModelImage& model, const CrossReference& found, SourceLines& lines) {
    Json list = Json::array();
    for (const NodeId node : found.declarations) {
      Json json = PlaceAsJson(model, node, lines);
      if (model.Nodes()[node].entity == Entity::Decl) {
        const auto& decl = model.Decl(node);
        json["level"] = decl.level;
        json["picture"] = model.Text(decl.picture);
        json["offset"] = decl.offset;
        json["size"] = decl.size;
      }
      list.push_back(std::move(json));
    }
    return list;
  }

  static Json OccurrencesAsJson(const ModelImage& model, const CrossReference& found, SourceLines& lines) {
    Json list = Json::array();
    for (const NodeId node : found.occurrences) {
      Json json = PlaceAsJson(model, node, lines);
      const auto& record = model.Nodes()[node];
      json["usage"] = NameOf(record.usage);
      json["statement"] = Statement(model, node);
      json["declaration"] = record.declaration == 0 ? Json() : Json(Key(model, record.declaration));
      list.push_back(std::move(json));
    }
    return list;
  }

  std::string program_;
  std::string name_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeXrefCommand() {
  return std::make_unique<XrefCommand>();
}

}  // namespace qmrules::cli
