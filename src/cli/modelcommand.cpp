#include <fmt/format.h>

#include <CLI/App.hpp>
#include <functional>
#include <optional>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/displaywidth.h"
#include "cli/output.h"
#include "cli/programmodel.h"
#include "cli/sourcesegment.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

using platform::ModelObject;

class ModelCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"model", "Show the code model of a program"}; }
  std::vector<std::string> Examples() const override {
    return {"model PBRATE01", "model PBRATE01 --entity COND", "model PBRATE01 --at cobol/pbrate01.cbl:567 --json"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("PROGRAM", program_, kProgramHelp)->type_name("")->required();
    app.add_option("--entity", entity_,
                   "Only the objects of this kind and of its special kinds, as DECL, STAT, IF, VAR")
        ->type_name("NAME");
    app.add_option("--at", at_, "Only the objects that stand at a line; the file may be named by its end")
        ->type_name("FILE:LINE");
    app.add_flag("--json", json_, "Print JSON, with all attributes");
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    if (!at_.empty()) place_ = ParseSegmentPlace(at_);
    const auto program = FindProgram(host, program_);
    RequireModel(program);
    const std::string path = host.PathOf(program.modelFile);
    const auto head = workbench::codemodel::ReadModelHead(path);
    RequirePlace(program, head);
    const auto model = host.Models().OpenModel(path);
    if (!json_) PrintGaps(context, program, head.gaps);
    context_ = &context;
    entities_ = EntitiesOf(*model);
    if (json_) context.environment.out << '[';
    Walk(*model);
    if (json_) context.environment.out << (isFirst_ ? "]\n" : "\n]\n");
    return kDone;
  }

 private:
  // The file of --at must be one of those that the program is made of.
  void RequirePlace(const catalogue::RegisteredSource& program, const workbench::codemodel::ModelHead& head) {
    if (!place_) return;
    for (const auto& file : head.files) {
      const bool isMeant = file.name == place_->file || file.name.ends_with("/" + place_->file);
      if (isMeant) file_ = file.name;
      if (isMeant) return;
    }
    throw platform::Error(
        fmt::format("{} is no file of {}; name {} or a copybook of it.", place_->file, program.name, program.file));
  }

  // The names of the entity asked for and of its special kinds; empty for all.
  std::vector<std::string> EntitiesOf(const platform::SourceModel& model) const {
    std::vector<std::string> names;
    if (entity_.empty()) return names;
    const auto* entity = model.EntityDef(entity_);
    if (entity == nullptr) {
      throw platform::Error(
          fmt::format("A code model has no objects of the kind {}; it has kinds such as PAR, STAT, IF, "
                      "COND, VAR, DECL, FILE.",
                      entity_));
    }
    std::vector<const platform::ModelEntity*> waiting{entity};
    while (!waiting.empty()) {
      const auto* next = waiting.back();
      waiting.pop_back();
      names.emplace_back(next->Name());
      for (const auto* relation : next->Relations()) {
        if (relation->Kind() == 1) waiting.push_back(&relation->Target());
      }
    }
    return names;
  }

  // All objects in the order of the tree. Each stands on its own level, or on the left where only some are shown.
  void Walk(const platform::SourceModel& model) {
    std::size_t depth = 0;
    const ModelObject* at = model.FirstNode();
    while (at != nullptr) {
      if (IsWanted(*at)) Print(*at, depth);
      const auto children = at->Children();
      if (!children->Eof()) {
        at = &children->Item();
        ++depth;
        continue;
      }
      while (at != nullptr && at->NextSibling() == nullptr) {
        at = at->Parent();
        if (at != nullptr) --depth;
      }
      if (at != nullptr) at = at->NextSibling();
    }
  }

  bool IsWanted(const ModelObject& object) const {
    if (!entities_.empty() && std::ranges::find(entities_, object.EntityDef().Name()) == entities_.end()) return false;
    if (!place_) return true;
    const auto location = object.Location();
    return location.FileName == file_ && location.FirstRow <= place_->toRow && location.LastRow >= place_->fromRow;
  }

  static std::string AttributeOf(const ModelObject& object, std::string_view name) {
    return object.EntityDef().HasAttribute(name) ? object.Attr(name).Text() : std::string();
  }

  void Print(const ModelObject& object, std::size_t depth) {
    const auto location = object.Location();
    if (json_) {
      context_->environment.out << (isFirst_ ? "\n" : ",\n") << JsonText(AsJson(object, location));
    } else {
      std::string line = entities_.empty() ? std::string(2 * depth, ' ') : std::string();
      line += object.Key();
      for (const char* attribute : {"Name", "VarUsage"}) {
        if (const auto text = AttributeOf(object, attribute); !text.empty()) line += "  " + text;
      }
      line += fmt::format("  {}:{}", location.FileName, location.FirstRow);
      if (location.LastRow != location.FirstRow) line += fmt::format("-{}", location.LastRow);
      context_->environment.out << OneLine(line) << '\n';
    }
    isFirst_ = false;
  }

  static Json AsJson(const ModelObject& object, const platform::ModelLocation& location) {
    Json json{{"key", object.Key()}};
    json["parent"] = object.Parent() == nullptr ? Json() : Json(object.Parent()->Key());
    json["file"] = location.FileName;
    json["firstRow"] = location.FirstRow;
    json["lastRow"] = location.LastRow;
    Json attributes = Json::object();
    for (const auto& name : object.EntityDef().Attributes()) {
      const auto value = object.Attr(name);
      if (!value.IsAbsent()) attributes[name] = ToJson(value);
    }
    json["attributes"] = std::move(attributes);
    return json;
  }

  std::string program_;
  std::string entity_;
  std::string at_;
  bool json_ = false;
  std::optional<SegmentPlace> place_;
  std::string file_;  // of the place, as the model names it
  std::vector<std::string> entities_;
  Context* context_ = nullptr;
  bool isFirst_ = true;
};

}  // namespace

std::unique_ptr<Command> MakeModelCommand() {
  return std::make_unique<ModelCommand>();
}

}  // namespace qmrules::cli
