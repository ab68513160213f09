#include "workbench/codemodel/codemodel.h"

#include <fmt/format.h>

#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "platform/error.h"
#include "shell/casefold.h"
#include "shell/utf16.h"
#include "workbench/codemodel/codeobject.h"
#include "workbench/codemodel/entitytable.h"

namespace qmrules::workbench::codemodel {

namespace {

// The node that an ID means, virtual ones included; 0 for what can be none.
NodeId NodeOf(std::int64_t id) {
  if (id <= 0) return 0;
  return static_cast<NodeId>(static_cast<std::uint64_t>(id) & std::numeric_limits<NodeId>::max());
}

struct KeyParts {
  std::string_view entity;
  std::int64_t id = 0;
};

std::optional<KeyParts> SplitKey(std::string_view key) {
  const std::size_t mark = key.find('#');
  if (mark == std::string_view::npos) return std::nullopt;
  KeyParts parts{key.substr(0, mark)};
  const char* const end = key.data() + key.size();
  const auto [stop, error] = std::from_chars(key.data() + mark + 1, end, parts.id);
  if (error != std::errc() || stop != end || parts.id <= 0) return std::nullopt;
  return parts;
}

class CodeModel final : public platform::SourceModel {
 public:
  CodeModel(std::shared_ptr<const ModelImage> image, ModelSurroundings surroundings)
      : surroundings_(std::move(surroundings)), store_(std::move(image), surroundings_.readSource) {}

  std::string ModelName() const override { return std::string(Image().Language()); }
  std::string DefinitionText() const override { return EntityTable::Get().Definition(Image().Language()); }

  const platform::ModelEntity* EntityDef(std::string_view name) const override {
    const std::optional<Entity> entity = EntityNamed(name);
    return entity ? &EntityTable::Get().Of(*entity) : nullptr;
  }

  std::unique_ptr<platform::ModelCursor> Objects(std::string_view entity) const override {
    return store_.Objects(entity, 1, std::numeric_limits<NodeId>::max());
  }

  const platform::ModelObject& object(std::int64_t id) const override {
    const NodeId node = NodeOf(id);
    if (!IsNode(node)) throw platform::Error(fmt::format("The model of {} has no object {}.", Program(), id));
    return store_.Of(node);
  }

  const platform::ModelObject& object(std::string_view key) const override {
    const std::optional<KeyParts> parts = SplitKey(key);
    if (!parts) {
      throw platform::Error(
          fmt::format("\"{}\" is not an object key. A key is an entity name, \"#\" and a number, as VAR#17.",
                      shell::CutWithEllipsis(key, 200)));
    }
    const NodeId node = NodeOf(parts->id);
    if (!IsNode(node) || !shell::EqualIgnoringCase(NameOf(Image().Nodes()[node].entity), parts->entity)) {
      throw platform::Error(
          fmt::format("The model of {} has no object {}.", Program(), shell::CutWithEllipsis(key, 200)));
    }
    return store_.Of(node);
  }

  const platform::ModelObject* FirstNode() const override { return IsNode(1) ? store_.Find(1) : nullptr; }

  platform::Database& Database() const override {
    platform::Database* const database = surroundings_.database ? surroundings_.database() : nullptr;
    if (database == nullptr) throw platform::Error("The project has no dataflow database.");
    return *database;
  }

  std::vector<platform::ModelMatch> Matches(std::string_view, std::string_view, std::string_view) const override {
    return {};
  }

 private:
  const ModelImage& Image() const { return store_.Image(); }
  bool IsNode(NodeId node) const { return node != 0 && node < Image().Nodes().size(); }
  // For messages.
  std::string_view Program() const {
    return Image().Head().program.empty() ? Image().FileName(0) : std::string_view(Image().Head().program);
  }

  ModelSurroundings surroundings_;
  // Objects are made as they are asked for, which changes nothing that can be seen from outside.
  mutable ObjectStore store_;
};

}  // namespace

std::unique_ptr<platform::SourceModel> OpenCodeModel(std::shared_ptr<const ModelImage> image,
                                                     ModelSurroundings surroundings) {
  return std::make_unique<CodeModel>(std::move(image), std::move(surroundings));
}

std::unique_ptr<platform::SourceModel> CodeModelFactory::OpenModel(std::string_view path) {
  return OpenCodeModel(ModelImage::Open(std::string(path)), surroundings_);
}

}  // namespace qmrules::workbench::codemodel
