#include "workbench/codemodel/cobol/procedure/correspondingitems.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "workbench/codemodel/cobol/procedure/clauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

class Pairing {
 public:
  Pairing(StatementParser& parser, const CorrespondingGroups& groups)
      : parser_(parser), model_(parser.Model()), groups_(groups) {}

  void Run() {
    Pair(model_.Node(groups_.from).declaration, model_.Node(groups_.to).declaration);
    while (!waiting_.empty()) {
      const auto [from, to] = waiting_.back();
      waiting_.pop_back();
      Below(from, to);
    }
  }

 private:
  bool TakesPart(NodeId item) const {
    const DeclRecord& decl = model_.Decl(item);
    return decl.redefines == 0 && (decl.flags & (kOccurs | kFiller | kIndexName)) == 0 && decl.level < 66 &&
           decl.usage != DataUsage::Index;
  }

  bool IsNumber(NodeId item) const {
    const DeclRecord& decl = model_.Decl(item);
    return !HasItems(item) && (decl.flags & kNumeric) != 0 && (decl.flags & kEdited) == 0;
  }

  bool HasItems(NodeId item) const {
    for (NodeId below = item + 1; below <= model_.Node(item).last; below = model_.Node(below).last + 1) {
      if (model_.Node(below).entity == Entity::Decl && model_.Decl(below).level < 66) return true;
    }
    return false;
  }

  void Pair(NodeId from, NodeId to) {
    const auto isItem = [this](NodeId node) { return node != 0 && model_.Node(node).entity == Entity::Decl; };
    if (isItem(from) && isItem(to)) waiting_.emplace_back(from, to);
  }

  void Below(NodeId from, NodeId to) {
    const std::size_t groups = waiting_.size();
    for (NodeId item = from + 1; item <= model_.Node(from).last; item = model_.Node(item).last + 1) {
      if (model_.Node(item).entity != Entity::Decl || !TakesPart(item)) continue;
      const NodeId other = Partner(item, to);
      if (other == 0 || !TakesPart(other)) continue;
      const bool fromIsGroup = HasItems(item), toIsGroup = HasItems(other);
      if (fromIsGroup && toIsGroup) {
        waiting_.emplace_back(item, other);
      } else if (!groups_.computes || (IsNumber(item) && IsNumber(other))) {
        Make(item, other);
      }
    }
    std::reverse(waiting_.begin() + static_cast<std::ptrdiff_t>(groups), waiting_.end());
  }

  NodeId Partner(NodeId item, NodeId group) const {
    const std::uint32_t name = parser_.Symbols().Find(model_.TextOf(model_.Node(item).name));
    if (name == SymbolTable::kNone) return 0;
    for (const ProgramScope* scope = &parser_.Scope(); scope != nullptr; scope = scope->Parent()) {
      if (const NodeId found = scope->LastChild(group, name)) return found;
    }
    return 0;
  }

  void Make(NodeId from, NodeId to) {
    if (!parser_.TakeImplicit() || !parser_.TakeImplicit()) return;
    ImplicitVariable(parser_, from, Role::Source, VarUsage::Out);
    ImplicitVariable(parser_, to, groups_.role, groups_.usage);
  }

  StatementParser& parser_;
  ModelBuilder& model_;
  CorrespondingGroups groups_;
  std::vector<std::pair<NodeId, NodeId>> waiting_;  // groups whose items are still to be paired, the next one last
};

}  // namespace

void CorrespondingItems(StatementParser& parser, const CorrespondingGroups& groups) {
  Pairing(parser, groups).Run();
}

}  // namespace qmrules::workbench::codemodel::cobol
