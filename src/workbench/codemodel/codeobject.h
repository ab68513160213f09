#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sourcemodel.h"
#include "workbench/codemodel/entitytable.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/codemodel/nodewalk.h"
#include "workbench/codemodel/sourcefile.h"

namespace qmrules::workbench::codemodel {

class CodeObject;

// What the objects of one model share: the records, the objects that were asked for, the texts of the source files.
class ObjectStore {
 public:
  ObjectStore(std::shared_ptr<const ModelImage> image, std::function<std::string(std::string_view)> readSource);
  ~ObjectStore();
  ObjectStore(const ObjectStore&) = delete;
  ObjectStore& operator=(const ObjectStore&) = delete;

  const ModelImage& Image() const { return *image_; }
  // The object of a node; the same one at every call. nullptr for 0.
  const CodeObject* Find(NodeId node);
  const CodeObject& Of(NodeId node) { return *Find(node); }
  // Throws platform::Error when the source cannot be read.
  const SourceFile& Source(std::uint16_t file);
  const OccurrenceIndex& Occurrences();

  // The objects of an entity, its special kinds included, whose nodes lie from one number to another. Throws
  // platform::Error for an entity that there is not.
  std::unique_ptr<platform::ModelCursor> Objects(std::string_view entity, NodeId first, NodeId last);
  std::unique_ptr<platform::ModelCursor> List(std::vector<NodeId> nodes);

 private:
  std::shared_ptr<const ModelImage> image_;
  std::function<std::string(std::string_view)> readSource_;
  std::vector<std::unique_ptr<const CodeObject>> objects_;  // by node
  std::vector<std::unique_ptr<const SourceFile>> sources_;  // by file
  std::optional<OccurrenceIndex> occurrences_;
};

class CodeObject final : public platform::ModelObject {
 public:
  CodeObject(ObjectStore& store, NodeId node) : store_(store), number_(node) {}

  std::string Key() const override;
  std::int64_t ID() const override { return number_; }
  const platform::ModelEntity& EntityDef() const override { return Definition(); }
  std::string Text() const override;
  platform::Value Attr(std::string_view name) const override;
  platform::ModelLocation Location() const override;
  const platform::ModelObject* Parent() const override;
  const platform::ModelObject* NextSibling() const override;
  std::unique_ptr<platform::ModelCursor> Children() const override;
  std::unique_ptr<platform::ModelCursor> Objects(std::string_view entity) const override;
  std::unique_ptr<platform::ModelCursor> Related(std::string_view relation) const override;

 private:
  const ModelImage& Image() const { return store_.Image(); }
  const NodeRecord& Node() const { return Image().Nodes()[number_]; }
  const CodeEntity& Definition() const { return EntityTable::Get().Of(Node().entity); }
  std::vector<NodeId> RelatedNodes(const RelationSpec& relation) const;

  ObjectStore& store_;
  NodeId number_;
};

}  // namespace qmrules::workbench::codemodel
