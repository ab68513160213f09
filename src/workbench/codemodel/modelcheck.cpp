#include "workbench/codemodel/modelcheck.h"

#include <fmt/format.h>

#include <cstring>
#include <limits>

namespace qmrules::workbench::codemodel {

namespace {

std::string Defect(const char* what, std::size_t number) {
  return fmt::format("{} {} is wrong", what, number);
}

// What `detail` counts in, by entity.
enum class Detail : std::uint8_t { Nothing, Text, Decl, File };

Detail DetailOf(Entity entity) {
  switch (entity) {
    case Entity::Decl:
      return Detail::Decl;
    case Entity::File:
      return Detail::File;
    case Entity::Cond:
    case Entity::Par:
    case Entity::Section:
    case Entity::Identification:
    case Entity::If:
    case Entity::Port:
    case Entity::Var:
    case Entity::Const:
    case Entity::Func:
      return Detail::Text;
    default:
      return Detail::Nothing;
  }
}

class Checker {
 public:
  explicit Checker(const ModelRecords& records) : records_(records), nodes_(records.nodes) {}

  std::optional<std::string> Run() const {
    constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
    if (nodes_.empty() || nodes_.size() > most || records_.texts == 0 || records_.files == 0) return "it is empty";
    if (!IsEmpty(nodes_[0])) return Defect("node", 0);
    if (const std::size_t wrong = FirstWrongNode()) return Defect("node", wrong);
    for (std::size_t index = 0; index < records_.decls.size(); ++index) {
      if (!IsRight(records_.decls[index], index)) return Defect("declaration", index);
    }
    for (std::size_t index = 0; index < records_.fileRecords.size(); ++index) {
      if (!IsRight(records_.fileRecords[index], index)) return Defect("file", index);
    }
    for (std::size_t index = 0; index < records_.units.size(); ++index) {
      if (!IsRight(records_.units[index], index)) return Defect("unit", index);
    }
    return std::nullopt;
  }

 private:
  static bool IsEmpty(const NodeRecord& node) {
    constexpr NodeRecord empty;
    return std::memcmp(&node, &empty, sizeof empty) == 0;
  }

  // 0 when there is none. `around` is the innermost node that holds the current one: the node before it, or the nearest
  // one around that reaches so far. Each node is left once on the way up, so this takes time for each node once.
  std::size_t FirstWrongNode() const {
    const std::size_t count = nodes_.size();
    for (std::size_t number = 1; number < count; ++number) {
      const NodeRecord& node = nodes_[number];
      std::size_t around = number - 1;
      while (around != 0 && nodes_[around].last < number) around = nodes_[around].parent;
      const std::size_t end = around == 0 ? count - 1 : nodes_[around].last;
      if (node.parent != around || node.last < number || node.last > end || !HasRightParts(node)) return number;
    }
    return 0;
  }

  bool HasRightParts(const NodeRecord& node) const {
    const bool inRange = (node.name < records_.texts) & (node.declaration < nodes_.size()) &
                         (node.file < records_.files) & (static_cast<std::size_t>(node.entity) < kEntities) &
                         (static_cast<std::size_t>(node.usage) < kVarUsages) &
                         (static_cast<std::size_t>(node.role) < kRoles) & (node.firstRow <= node.lastRow) &
                         (node.position <= node.endPosition);
    return inRange && HasRightDetail(node);
  }

  bool HasRightDetail(const NodeRecord& node) const {
    const auto number = static_cast<NodeId>(&node - nodes_.data());
    switch (DetailOf(node.entity)) {
      case Detail::Text:
        return node.detail < records_.texts;
      case Detail::Decl:
        return node.detail < records_.decls.size() && records_.decls[node.detail].node == number;
      case Detail::File:
        return node.detail < records_.fileRecords.size() && records_.fileRecords[node.detail].node == number;
      case Detail::Nothing:
        break;
    }
    return true;
  }

  bool Is(NodeId node, Entity entity) const { return node < nodes_.size() && nodes_[node].entity == entity; }
  // Also right where there is none.
  bool IsOptional(NodeId node, Entity entity) const { return node == 0 || Is(node, entity); }

  bool IsRight(const DeclRecord& decl, std::size_t index) const {
    return Is(decl.node, Entity::Decl) && nodes_[decl.node].detail == index && IsOptional(decl.area, Entity::Decl) &&
           IsOptional(decl.redefines, Entity::Decl) && IsOptional(decl.renamesThrough, Entity::Decl) &&
           IsOptional(decl.dependingOn, Entity::Decl) && decl.picture < records_.texts && decl.value < records_.texts &&
           static_cast<std::size_t>(decl.usage) < kDataUsages && decl.section < kDataSections;
  }

  bool IsRight(const FileRecord& file, std::size_t index) const {
    return Is(file.node, Entity::File) && nodes_[file.node].detail == index && IsOptional(file.select, Entity::Ref) &&
           IsOptional(file.firstRecord, Entity::Decl) && IsOptional(file.status, Entity::Decl) &&
           IsOptional(file.key, Entity::Decl) && file.assign < records_.texts && file.organization < records_.texts &&
           file.access < records_.texts;
  }

  bool IsRight(const UnitRecord& unit, std::size_t index) const {
    return IsOptional(unit.node, Entity::Program) && IsOptional(unit.identification, Entity::Identification) &&
           IsOptional(unit.division, Entity::Division) && unit.name < records_.texts && unit.parent <= index &&
           unit.firstNode <= unit.lastNode && unit.lastNode < nodes_.size();
  }

  const ModelRecords& records_;
  std::span<const NodeRecord> nodes_;
};

}  // namespace

std::optional<std::string> FindDefect(const ModelRecords& records) {
  return Checker(records).Run();
}

}  // namespace qmrules::workbench::codemodel
