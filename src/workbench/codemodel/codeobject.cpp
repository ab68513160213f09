#include "workbench/codemodel/codeobject.h"

#include <fmt/format.h>

#include <utility>

#include "platform/error.h"
#include "workbench/codemodel/objectattributes.h"

namespace qmrules::workbench::codemodel {

namespace {

// A walk whose current node is 0 at its end.
template <typename Walk>
class NodeCursor final : public platform::ModelCursor {
 public:
  NodeCursor(ObjectStore& store, Walk walk) : store_(store), walk_(std::move(walk)) {}
  bool Eof() const override { return walk_.Current() == 0; }
  const platform::ModelObject& Item() const override {
    if (Eof()) throw platform::Error("A walk over a model has no object past its last one.");
    return store_.Of(walk_.Current());
  }
  void MoveNext() override {
    if (Eof()) throw platform::Error("A walk over a model cannot move past its last object.");
    walk_.MoveNext();
  }

 private:
  ObjectStore& store_;
  Walk walk_;
};

class SiblingWalk {
 public:
  SiblingWalk(const ModelImage& image, NodeId parent) : image_(image), current_(FirstChild(image, parent)) {}
  NodeId Current() const { return current_; }
  void MoveNext() { current_ = codemodel::NextSibling(image_, current_); }

 private:
  const ModelImage& image_;
  NodeId current_;
};

class ListWalk {
 public:
  explicit ListWalk(std::vector<NodeId> nodes) : nodes_(std::move(nodes)) {}
  NodeId Current() const { return index_ < nodes_.size() ? nodes_[index_] : 0; }
  void MoveNext() { ++index_; }

 private:
  std::vector<NodeId> nodes_;
  std::size_t index_ = 0;
};

}  // namespace

ObjectStore::ObjectStore(std::shared_ptr<const ModelImage> image,
                         std::function<std::string(std::string_view)> readSource)
    : image_(std::move(image)),
      readSource_(std::move(readSource)),
      objects_(image_->Nodes().size()),
      sources_(image_->Files().size()) {}

ObjectStore::~ObjectStore() = default;

const CodeObject* ObjectStore::Find(NodeId node) {
  if (node == 0) return nullptr;
  std::unique_ptr<const CodeObject>& object = objects_[node];
  if (!object) object = std::make_unique<const CodeObject>(*this, node);
  return object.get();
}

const SourceFile& ObjectStore::Source(std::uint16_t file) {
  std::unique_ptr<const SourceFile>& source = sources_[file];
  if (!source) {
    const std::string name(image_->FileName(file));
    if (!readSource_) throw platform::Error(fmt::format("The text of {} is not at hand.", name));
    source = std::make_unique<const SourceFile>(name, readSource_(name));
  }
  return *source;
}

const OccurrenceIndex& ObjectStore::Occurrences() {
  if (!occurrences_) occurrences_.emplace(*image_);
  return *occurrences_;
}

std::unique_ptr<platform::ModelCursor> ObjectStore::Objects(std::string_view entity, NodeId first, NodeId last) {
  const std::optional<Entity> kind = EntityNamed(entity);
  if (!kind) throw platform::Error(fmt::format("A code model has no entity \"{}\".", entity));
  return std::make_unique<NodeCursor<KindWalk>>(*this, KindWalk(*image_, *kind, first, last));
}

std::unique_ptr<platform::ModelCursor> ObjectStore::List(std::vector<NodeId> nodes) {
  return std::make_unique<NodeCursor<ListWalk>>(*this, ListWalk(std::move(nodes)));
}

std::string CodeObject::Key() const {
  return KeyOf(Image(), number_);
}

std::string CodeObject::Text() const {
  const SourceFile& source = store_.Source(Node().file);
  const std::uint32_t begin = source.Offset(Node().position);
  return std::string(source.Text().substr(begin, source.Offset(Node().endPosition) - begin));
}

platform::Value CodeObject::Attr(std::string_view name) const {
  const std::string_view attribute = Definition().Attribute(name);
  if (attribute.empty()) {
    throw platform::Error(fmt::format("{}: the entity {} has no attribute \"{}\".", Key(), Definition().Name(), name));
  }
  if (attribute == "Text" && Node().entity != Entity::Cond) return Text();
  return ReadAttribute(Image(), number_, attribute);
}

platform::ModelLocation CodeObject::Location() const {
  const NodeRecord& node = Node();
  platform::ModelLocation location;
  location.FileName = Image().FileName(node.file);
  location.FileID = node.file;
  location.FirstRow = static_cast<int>(node.firstRow);
  location.LastRow = static_cast<int>(node.lastRow);
  location.Position = static_cast<int>(node.position);
  location.EndPosition = static_cast<int>(node.endPosition);
  location.Order = static_cast<int>(node.order);
  return location;
}

const platform::ModelObject* CodeObject::Parent() const {
  return store_.Find(Node().parent);
}

const platform::ModelObject* CodeObject::NextSibling() const {
  return store_.Find(codemodel::NextSibling(Image(), number_));
}

std::unique_ptr<platform::ModelCursor> CodeObject::Children() const {
  return std::make_unique<NodeCursor<SiblingWalk>>(store_, SiblingWalk(Image(), number_));
}

std::unique_ptr<platform::ModelCursor> CodeObject::Objects(std::string_view entity) const {
  return store_.Objects(entity, number_ + 1, Node().last);
}

std::unique_ptr<platform::ModelCursor> CodeObject::Related(std::string_view relation) const {
  const CodeRelation* known = Definition().Relation(relation);
  if (known == nullptr || known->Kind() == kSpecialisation) return store_.List({});
  std::vector<NodeId> nodes = RelatedNodes(known->Spec());
  // A name can mean something of another kind than a relation leads to: then it leads nowhere from here.
  std::erase_if(
      nodes, [&](NodeId node) { return node == 0 || !IsKindOf(Image().Nodes()[node].entity, known->Spec().target); });
  return store_.List(std::move(nodes));
}

// May hold 0, and objects of other kinds.
std::vector<NodeId> CodeObject::RelatedNodes(const RelationSpec& relation) const {
  const std::string_view name = relation.name;
  if (name == "Declaration" || name == "Data" || name == "Program") return {Node().declaration};
  if (name == "Conditions" || name == "Records") return ChildrenOf(Image(), number_, relation.target);
  if (name == "THEN branch") return {ThenBranch(Image(), number_)};
  if (name == "ELSE branch") return {ElseBranch(Image(), number_)};
  if (name == "Redefines") return {Image().Decl(number_).redefines};
  if (name == "DependingOn") return {Image().Decl(number_).dependingOn};
  if (name == "Status") return {Image().File(number_).status};
  if (name == "Key") return {Image().File(number_).key};
  const auto occurrences = store_.Occurrences().Of(number_);
  return {occurrences.begin(), occurrences.end()};
}

}  // namespace qmrules::workbench::codemodel
