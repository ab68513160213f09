#include "workbench/codemodel/objectattributes.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

#include "workbench/codemodel/nodewalk.h"

namespace qmrules::workbench::codemodel {

namespace {

using platform::Value;

// A node with its record, and what is shared between the attributes.
struct Subject {
  const ModelImage& image;
  NodeId number;
  const NodeRecord& node;

  Value Text(TextId text) const { return text == 0 ? Value() : Value(image.Text(text)); }
  Value NameOfNode(NodeId other) const { return other == 0 ? Value() : Text(image.Nodes()[other].name); }
  const DeclRecord* Decl() const { return node.entity == Entity::Decl ? &image.Decl(number) : nullptr; }
  const FileRecord* File() const { return node.entity == Entity::File ? &image.File(number) : nullptr; }
};

// The texts of the children of this kind, parted by commas.
template <typename TextOf>
Value ListChildren(const Subject& subject, Entity kind, const TextOf& textOf) {
  std::string list;
  for (const NodeId child : ChildrenOf(subject.image, subject.number, kind)) {
    const std::string_view text = subject.image.Text(textOf(subject.image.Nodes()[child]));
    if (!list.empty() && !text.empty()) list += ", ";
    list += text;
  }
  return list.empty() ? Value() : Value(list);
}

Value ReadName(const Subject& subject) {
  return subject.Text(subject.node.entity == Entity::Port ? subject.node.detail : subject.node.name);
}

Value ReadText(const Subject& subject) {
  return subject.node.entity == Entity::Cond ? subject.Text(subject.node.detail) : Value();
}

Value ReadVarUsage(const Subject& subject) {
  if (subject.node.entity != Entity::Var || subject.node.usage == VarUsage::None) return {};
  return NameOf(subject.node.usage);
}

Value ReadPortType(const Subject& subject) {
  if (subject.node.entity != Entity::Port) return {};
  if ((subject.node.flags & kPortUsing) != 0) return "USING";
  return (subject.node.flags & kPortReturn) != 0 ? "RETURN" : "CALL";
}

Value ReadVerb(const Subject& subject) {
  return subject.Text(subject.node.name);
}
Value ReadDetailText(const Subject& subject) {
  return subject.Text(subject.node.detail);
}

Value ReadConditions(const Subject& subject) {
  return ListChildren(subject, Entity::Cond, [](const NodeRecord& child) { return child.detail; });
}

// Of an occurrence the key of its declaration; of a jump the name of where it goes.
Value ReadDeclaration(const Subject& subject) {
  const NodeId declaration = subject.node.declaration;
  if (IsKindOf(subject.node.entity, Entity::Stat)) {
    if (declaration != 0) return subject.NameOfNode(declaration);
    return ListChildren(subject, Entity::Ref, [](const NodeRecord& child) { return child.name; });
  }
  return declaration == 0 ? Value() : Value(KeyOf(subject.image, declaration));
}

Value ReadRole(const Subject& subject) {
  return subject.node.role == Role::None ? Value() : Value(NameOf(subject.node.role));
}

Value Number(std::uint64_t number) {
  return static_cast<std::int64_t>(number);
}

Value ReadLevel(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr || decl->level == 0 ? Value() : Number(decl->level);
}

Value ReadPicture(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : subject.Text(decl->picture);
}

Value ReadUsage(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : Value(NameOf(decl->usage));
}

Value ReadOffset(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : Number(decl->offset);
}

Value ReadSize(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : Number(decl->size);
}

Value ReadDigits(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr || (decl->flags & kNumeric) == 0 ? Value() : Number(decl->digits);
}

Value ReadScale(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr || (decl->flags & kNumeric) == 0 ? Value() : Value(decl->scale);
}

Value ReadOccurs(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr || (decl->flags & kOccurs) == 0 ? Value() : Number(decl->occurs);
}

Value ReadOccursLeast(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr || (decl->flags & kOccurs) == 0 ? Value() : Number(decl->occursLeast);
}

Value ReadDependingOn(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : subject.NameOfNode(decl->dependingOn);
}

Value ReadRedefines(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : subject.NameOfNode(decl->redefines);
}

Value ReadValue(const Subject& subject) {
  if (subject.node.entity == Entity::Const) return subject.Text(subject.node.name);
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : subject.Text(decl->value);
}

Value ReadFlag(const Subject& subject, DeclFlags flag) {
  if (const DeclRecord* decl = subject.Decl()) return (decl->flags & flag) != 0;
  if (const FileRecord* file = subject.File()) return (file->flags & flag) != 0;
  return {};
}

Value ReadExternal(const Subject& subject) {
  return ReadFlag(subject, kExternal);
}
Value ReadGlobal(const Subject& subject) {
  return ReadFlag(subject, kGlobal);
}

Value ReadSection(const Subject& subject) {
  const DeclRecord* decl = subject.Decl();
  return decl == nullptr ? Value() : Value(NameOf(static_cast<DataSectionKind>(decl->section)));
}

Value ReadOrganization(const Subject& subject) {
  const FileRecord* file = subject.File();
  return file == nullptr ? Value() : subject.Text(file->organization);
}

Value ReadAccess(const Subject& subject) {
  const FileRecord* file = subject.File();
  return file == nullptr ? Value() : subject.Text(file->access);
}

Value ReadAssign(const Subject& subject) {
  const FileRecord* file = subject.File();
  return file == nullptr ? Value() : subject.Text(file->assign);
}

struct AttributeReader {
  std::string_view name;
  Value (*read)(const Subject& subject);
};

constexpr std::array<AttributeReader, 28> kReaders = {{
    {"Name", ReadName},
    {"Text", ReadText},
    {"VarUsage", ReadVarUsage},
    {"PORTTYPE", ReadPortType},
    {"Verb", ReadVerb},
    {"Kind", ReadDetailText},
    {"Conditions", ReadConditions},
    {"Declaration", ReadDeclaration},
    {"Role", ReadRole},
    {"Description", ReadDetailText},
    {"Level", ReadLevel},
    {"Picture", ReadPicture},
    {"Usage", ReadUsage},
    {"Offset", ReadOffset},
    {"Size", ReadSize},
    {"Digits", ReadDigits},
    {"Scale", ReadScale},
    {"Occurs", ReadOccurs},
    {"OccursLeast", ReadOccursLeast},
    {"DependingOn", ReadDependingOn},
    {"Redefines", ReadRedefines},
    {"Value", ReadValue},
    {"External", ReadExternal},
    {"Global", ReadGlobal},
    {"Section", ReadSection},
    {"Organization", ReadOrganization},
    {"Access", ReadAccess},
    {"Assign", ReadAssign},
}};

}  // namespace

Value ReadAttribute(const ModelImage& image, NodeId node, std::string_view attribute) {
  const auto reader = std::ranges::find(kReaders, attribute, &AttributeReader::name);
  if (reader == kReaders.end()) return {};
  return reader->read({image, node, image.Nodes()[node]});
}

std::string KeyOf(const ModelImage& image, NodeId node) {
  return fmt::format("{}#{}", NameOf(image.Nodes()[node].entity), node);
}

}  // namespace qmrules::workbench::codemodel
