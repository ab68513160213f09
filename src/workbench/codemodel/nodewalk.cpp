#include "workbench/codemodel/nodewalk.h"

#include <algorithm>

namespace qmrules::workbench::codemodel {

KindWalk::KindWalk(const ModelImage& image, Entity entity, NodeId first, NodeId last) {
  for (const Entity kind : KindsOf(entity)) {
    const std::span<const NodeId> all = image.NodesOf(kind);
    const auto begin = std::lower_bound(all.begin(), all.end(), first);
    const auto end = std::upper_bound(begin, all.end(), last);
    if (begin != end) lists_.emplace_back(begin, end);
  }
  FindLowest();
}

void KindWalk::MoveNext() {
  if (current_ == 0) return;
  lists_[lowest_] = lists_[lowest_].subspan(1);
  FindLowest();
}

void KindWalk::FindLowest() {
  current_ = 0;
  for (std::size_t list = 0; list < lists_.size(); ++list) {
    if (lists_[list].empty() || (current_ != 0 && lists_[list].front() > current_)) continue;
    current_ = lists_[list].front();
    lowest_ = list;
  }
}

NodeId FirstChild(const ModelImage& image, NodeId node) {
  return image.Nodes()[node].last > node ? node + 1 : 0;
}

NodeId NextSibling(const ModelImage& image, NodeId node) {
  const auto nodes = image.Nodes();
  const NodeId parent = nodes[node].parent;
  const NodeId end = parent == 0 ? static_cast<NodeId>(nodes.size() - 1) : nodes[parent].last;
  return nodes[node].last < end ? nodes[node].last + 1 : 0;
}

std::vector<NodeId> ChildrenOf(const ModelImage& image, NodeId node, Entity kind) {
  std::vector<NodeId> children;
  for (NodeId child = FirstChild(image, node); child != 0; child = NextSibling(image, child)) {
    if (IsKindOf(image.Nodes()[child].entity, kind)) children.push_back(child);
  }
  return children;
}

namespace {

// The next BLOCK of this role behind a COND and before the next one.
NodeId BlockBehind(const ModelImage& image, NodeId condition, Role role) {
  for (NodeId next = NextSibling(image, condition); next != 0; next = NextSibling(image, next)) {
    const NodeRecord& record = image.Nodes()[next];
    if (record.entity == Entity::Block && record.role == role) return next;
    if (record.entity == Entity::Cond) break;
  }
  return 0;
}

bool IsBranching(const ModelImage& image, NodeId condition) {
  const NodeId parent = image.Nodes()[condition].parent;
  return parent != 0 && image.Nodes()[parent].entity == Entity::If;
}

}  // namespace

NodeId ThenBranch(const ModelImage& image, NodeId condition) {
  return IsBranching(image, condition) ? BlockBehind(image, condition, Role::Then) : 0;
}

NodeId ElseBranch(const ModelImage& image, NodeId condition) {
  return IsBranching(image, condition) ? BlockBehind(image, condition, Role::Else) : 0;
}

OccurrenceIndex::OccurrenceIndex(const ModelImage& image) : starts_(image.Nodes().size() + 1) {
  const auto nodes = image.Nodes();
  std::uint32_t count = 0;
  for (const NodeRecord& node : nodes) {
    if (node.declaration == 0) continue;
    ++starts_[node.declaration + 1];
    ++count;
  }
  for (std::size_t start = 1; start < starts_.size(); ++start) starts_[start] += starts_[start - 1];
  nodes_.resize(count);
  std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
  for (NodeId node = 1; node < nodes.size(); ++node) {
    if (nodes[node].declaration != 0) nodes_[next[nodes[node].declaration]++] = node;
  }
}

}  // namespace qmrules::workbench::codemodel
