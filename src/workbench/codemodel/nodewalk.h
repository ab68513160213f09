#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "workbench/codemodel/modelfile.h"

namespace qmrules::workbench::codemodel {

// The nodes of an entity, its special kinds included, from one number to another, in ascending order: the lists of the
// kinds are merged on the way.
class KindWalk {
 public:
  KindWalk(const ModelImage& image, Entity entity, NodeId first, NodeId last);
  // 0 at the end.
  NodeId Current() const { return current_; }
  void MoveNext();

 private:
  void FindLowest();

  std::vector<std::span<const NodeId>> lists_;  // what is left of each
  std::size_t lowest_ = 0;
  NodeId current_ = 0;
};

// 0 where there is none.
NodeId FirstChild(const ModelImage& image, NodeId node);
NodeId NextSibling(const ModelImage& image, NodeId node);
// The children of this kind, in their order.
std::vector<NodeId> ChildrenOf(const ModelImage& image, NodeId node, Entity kind);
// The blocks that a condition decides between; 0 where there is none.
NodeId ThenBranch(const ModelImage& image, NodeId condition);
NodeId ElseBranch(const ModelImage& image, NodeId condition);

// For each declaration, the nodes whose `declaration` it is, in ascending order.
class OccurrenceIndex {
 public:
  explicit OccurrenceIndex(const ModelImage& image);
  std::span<const NodeId> Of(NodeId declaration) const {
    return std::span(nodes_).subspan(starts_[declaration], starts_[declaration + 1] - starts_[declaration]);
  }

 private:
  std::vector<std::uint32_t> starts_;
  std::vector<NodeId> nodes_;
};

}  // namespace qmrules::workbench::codemodel
