#include "workbench/codemodel/cobol/procedure/fallthrough.h"

#include <algorithm>
#include <vector>

#include "workbench/codemodel/cobol/procedure/verbs.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

class Flow {
 public:
  Flow(const ModelBuilder& model, NodeId division, NodeId entry) : model_(model) {
    for (NodeId node = division + 1; node <= model.LastNode(); ++node) {
      if (model.Node(node).entity == Entity::Par && node >= entry) paragraphs_.push_back(node);
    }
  }

  bool ReachesEnd() const {
    if (paragraphs_.empty()) return true;
    std::vector<bool> reached(paragraphs_.size(), false);
    std::vector<std::size_t> open{0};
    while (!open.empty()) {
      const std::size_t at = open.back();
      open.pop_back();
      if (reached[at]) continue;
      reached[at] = true;
      if (!Leaves(paragraphs_[at])) {
        if (at + 1 == paragraphs_.size()) return true;
        open.push_back(at + 1);
      }
      Follow(paragraphs_[at], open);
    }
    return false;
  }

 private:
  // The paragraph's or branch's last statement lets nothing past it.
  bool Leaves(NodeId list) const {
    NodeId last = 0;
    for (NodeId node = list + 1; node <= model_.Node(list).last; node = model_.Node(node).last + 1) last = node;
    if (last == 0) return false;
    const NodeRecord& record = model_.Node(last);
    if (record.entity == Entity::Port) {
      return (record.flags & kPortReturn) != 0 || model_.TextOf(record.name) == "EXEC CICS XCTL";
    }
    if (record.entity == Entity::Goto) return IsOnlyWay(last);
    return record.entity == Entity::If && BothLeave(last);
  }

  // GO TO without DEPENDING ON.
  bool IsOnlyWay(NodeId go) const {
    for (NodeId node = go + 1; node <= model_.Node(go).last; ++node) {
      if (model_.Node(node).role == Role::DependingOn) return false;
    }
    return true;
  }

  bool BothLeave(NodeId branches) const {
    bool hasElse = false;
    for (NodeId node = branches + 1; node <= model_.Node(branches).last; node = model_.Node(node).last + 1) {
      const NodeRecord& record = model_.Node(node);
      if (record.entity != Entity::Block) continue;
      if (record.role == Role::Else) hasElse = true;
      if (!Leaves(node)) return false;
    }
    return hasElse;
  }

  void Follow(NodeId paragraph, std::vector<std::size_t>& open) const {
    for (NodeId node = paragraph + 1; node <= model_.Node(paragraph).last; ++node) {
      const NodeRecord& record = model_.Node(node);
      if (record.entity != Entity::Ref || record.declaration == 0) continue;
      if (model_.Node(record.parent).entity != Entity::Goto) continue;
      const auto target = std::lower_bound(paragraphs_.begin(), paragraphs_.end(), record.declaration);
      if (target != paragraphs_.end()) open.push_back(static_cast<std::size_t>(target - paragraphs_.begin()));
    }
  }

  const ModelBuilder& model_;
  std::vector<NodeId> paragraphs_;
};

}  // namespace

bool ReachesEnd(const ModelBuilder& model, NodeId division, NodeId entry) {
  return Flow(model, division, entry).ReachesEnd();
}

}  // namespace qmrules::workbench::codemodel::cobol
