#include "validation/suffixtree.h"

#include <algorithm>

#include "validation/largepages.h"

namespace qmrules::validation {

namespace {

// Asks for the memory of the node, which may lie in two lines of the cache.
[[gnu::always_inline]] inline void Fetch(const SuffixNode& node) {
  __builtin_prefetch(&node);
  __builtin_prefetch(reinterpret_cast<const char*>(&node + 1) - 1);
}

}  // namespace

// Most insertions begin at the child of the root by the suffix's first number, and in a large tree all that they look
// at there has to come from memory. It is asked for in four steps, each when what it is found through has come: the
// number of the child, the child, its line and the nodes around it, and its place in the index. What is asked for in
// vain, because the tree has changed since, costs time only.
//
// Inlined by force: compilers take a function that only prefetches for one without effect and leave its calls out.
[[gnu::always_inline]] inline void SuffixTree::FetchAhead() const {
  constexpr std::int32_t step = 4;
  if (currentSuffix_ + 4 * step >= Terminator()) return;
  const auto childOf = [this](std::int32_t suffix) -> const std::int32_t& {
    return rootChildren_[static_cast<std::size_t>(Id(suffix))];
  };
  __builtin_prefetch(&childOf(currentSuffix_ + 4 * step));
  Fetch(Node(childOf(currentSuffix_ + 3 * step)));
  const SuffixNode& child = Node(childOf(currentSuffix_ + 2 * step));
  __builtin_prefetch(&lineIds_[static_cast<std::size_t>(child.EdgeStart) + 1]);
  for (const std::int32_t near : {child.firstChild, child.lastChild, child.previousSibling, child.nextSibling}) {
    Fetch(Node(near));
  }
  const std::int32_t next = childOf(currentSuffix_ + step);
  const std::int32_t last = Node(next).lastChild;
  if (last != Node(next).firstChild) {
    children_.Fetch(next, Id(currentSuffix_ + step + 1));
    children_.Fetch(next, Node(last).edgeId);
  }
}

void SuffixTree::BuildSuffixTree(std::span<const std::int32_t> lineIds, const std::function<void()>& processEvents) {
  lineIds_ = lineIds;
  MakeRoom();
  nodes_.emplace_back();
  AddNode({.SuffixLink = kRoot, .Parent = kRoot});
  tail_ = 0;
  head_ = kRoot;
  for (currentSuffix_ = 1; currentSuffix_ < Terminator(); ++currentSuffix_) {
    if (processEvents) processEvents();
    FetchAhead();
    InsertSuffix();
  }
  AddLastLeaf();
}

// All nodes that there can be: pages that are not needed are never touched.
void SuffixTree::MakeRoom() {
  nodes_.clear();
  nodes_.reserve(2 * static_cast<std::size_t>(Terminator()) + 1);
  PreferLargePages(nodes_.data(), nodes_.capacity() * sizeof(SuffixNode));
  const auto ids = static_cast<std::size_t>(std::max(0, std::ranges::max(lineIds_)));
  rootChildren_.clear();
  rootChildren_.reserve(ids + 1);
  PreferLargePages(rootChildren_.data(), rootChildren_.capacity() * sizeof(std::int32_t));
  rootChildren_.resize(ids + 1);
  children_.Clear();
}

NodeKind SuffixTree::Kind(std::int32_t node) const {
  if (node == kRoot) return NodeKind::Root;
  return Node(node).firstChild == 0 ? NodeKind::Leaf : NodeKind::Internal;
}

std::size_t SuffixTree::Bytes() const {
  return nodes_.capacity() * sizeof(SuffixNode) + rootChildren_.capacity() * sizeof(std::int32_t) + children_.Bytes();
}

std::int32_t SuffixTree::FindSegment(std::span<const std::int32_t> segmentIds) const {
  std::int32_t node = 0;
  for (std::size_t matched = 0; matched < segmentIds.size();) {
    node = Child(node == 0 ? kRoot : node, segmentIds[matched]);
    if (node == 0) return 0;
    const SuffixNode& found = Node(node);
    for (std::int32_t k = 0; k < found.EdgeLength && matched < segmentIds.size(); ++k, ++matched) {
      if (Id(found.EdgeStart + k) != segmentIds[matched]) return 0;
    }
  }
  return node;
}

// Without a stack: from a node without children on, the way leads over the next siblings of those above.
void SuffixTree::CollectLeaves(std::int32_t node, std::vector<std::int32_t>& suffixes) const {
  for (std::int32_t at = node;;) {
    while (Node(at).firstChild != 0) at = Node(at).firstChild;
    suffixes.push_back(Node(at).Suffix);
    while (at != node && Node(at).nextSibling == 0) at = Node(at).Parent;
    if (at == node) return;
    at = Node(at).nextSibling;
  }
}

void SuffixTree::InsertSuffix() {
  if (At(head_).SuffixLink == 0) LinkHead();

  std::int32_t node = At(head_).SuffixLink;
  const std::int32_t matched = ScanOn(node);
  std::int32_t parent = node;
  if (At(node).Depth != matched) {
    parent = SplitEdge(node, matched);
    // The head's link led to the lower node because its own place lay on the edge; now there is a node at it.
    if (matched >= At(head_).Depth - 1 && matched < At(At(head_).SuffixLink).Depth) At(head_).SuffixLink = parent;
  }
  // All nodes that are linked to one are equally deep, so the first of them is the shallowest.
  SuffixNode& linked = At(At(head_).SuffixLink);
  if (linked.BackLink == 0) linked.BackLink = head_;

  tail_ = currentSuffix_ + matched - 1;
  head_ = parent;
  AddLeaf(parent, tail_ + 1);
}

// Gives the head its suffix link: the place of its string without the first number. That string is in the tree, so from
// its parent's link on it is enough to look at the first number of each edge. Where the place lies on an edge the link
// leads to the node below; the insertion then splits the edge there.
void SuffixTree::LinkHead() {
  const std::int32_t wanted = tail_ - currentSuffix_ + 1;
  std::int32_t node = kRoot;
  if (wanted > 0) {
    node = At(At(head_).Parent).SuffixLink;
    while (At(node).Depth < wanted) node = Child(node, Id(currentSuffix_ + At(node).Depth));
  }
  At(head_).SuffixLink = node;
}

// Follows the current suffix down from `node`, the head's link, as far as the tree goes: `node` becomes the node last
// entered, and the result is how many numbers of the suffix matched, which may end on the edge above it.
std::int32_t SuffixTree::ScanOn(std::int32_t& node) const {
  std::int32_t matched = head_ == kRoot ? 0 : Node(head_).Depth - 1;
  while (true) {
    const SuffixNode& at = Node(node);
    const std::int32_t pathStart = at.EdgeStart + at.EdgeLength - at.Depth;
    while (matched < at.Depth) {
      if (Id(pathStart + matched) != Id(currentSuffix_ + matched)) return matched;
      ++matched;
    }
    const std::int32_t child = Child(node, Id(currentSuffix_ + matched));
    if (child == 0) return matched;
    node = child;
    ++matched;
  }
}

// Puts a node on the edge above `lower`, at the depth.
std::int32_t SuffixTree::SplitEdge(std::int32_t lower, std::int32_t depth) {
  const std::int32_t parent = At(lower).Parent;
  const std::int32_t edgeStart = At(lower).EdgeStart;
  const std::int32_t edgeLength = depth - At(parent).Depth;
  RemoveChild(lower);
  const std::int32_t upper = AddNode({.Suffix = currentSuffix_,
                                      .Parent = parent,
                                      .EdgeStart = edgeStart,
                                      .EdgeLength = edgeLength,
                                      .Depth = depth,
                                      .edgeId = At(lower).edgeId});
  AppendChild(parent, upper);
  At(lower).EdgeStart += edgeLength;
  At(lower).EdgeLength -= edgeLength;
  At(lower).edgeId = Id(At(lower).EdgeStart);
  AppendChild(upper, lower);
  return upper;
}

void SuffixTree::AddLeaf(std::int32_t parent, std::int32_t edgeStart) {
  const std::int32_t edgeLength = Terminator() - edgeStart + 1;
  AppendChild(parent, AddNode({.Suffix = currentSuffix_,
                               .EdgeStart = edgeStart,
                               .EdgeLength = edgeLength,
                               .Depth = At(parent).Depth + edgeLength,
                               .edgeId = Id(edgeStart)}));
}

// The suffix of the terminator alone has a node, but nothing leads to it.
void SuffixTree::AddLastLeaf() {
  AddNode({.Suffix = Terminator(), .Parent = kRoot, .EdgeStart = Terminator() - 1, .EdgeLength = 1, .Depth = 1});
}

std::int32_t SuffixTree::AddNode(const SuffixNode& node) {
  nodes_.push_back(node);
  return NodeCount();
}

// The child whose edge begins with the number; 0 for none. At nodes other than the root the first and the last child,
// which are all that most nodes have, are looked at; those between them are in the index.
std::int32_t SuffixTree::Child(std::int32_t node, std::int32_t id) const {
  if (node == kRoot) return rootChildren_[static_cast<std::size_t>(id)];
  const SuffixNode& above = Node(node);
  if (above.firstChild == above.lastChild) {
    return above.firstChild != 0 && Node(above.firstChild).edgeId == id ? above.firstChild : 0;
  }
  if (Node(above.lastChild).edgeId == id) return above.lastChild;
  if (Node(above.firstChild).edgeId == id) return above.firstChild;
  return Node(above.firstChild).nextSibling == above.lastChild ? 0 : children_.Find(node, id);
}

void SuffixTree::AppendChild(std::int32_t parent, std::int32_t child) {
  SuffixNode& above = At(parent);
  SuffixNode& added = At(child);
  const std::int32_t last = above.lastChild;
  added.Parent = parent;
  added.previousSibling = last;
  added.nextSibling = 0;
  above.lastChild = child;
  (last == 0 ? above.firstChild : At(last).nextSibling) = child;
  if (parent == kRoot) {
    rootChildren_[static_cast<std::size_t>(added.edgeId)] = child;
    return;
  }
  // It may be there under this number already: the node that it took the place of when it was made by a split.
  if (last != 0 && last != above.firstChild) children_.Put(parent, At(last).edgeId, last);
}

// Takes the child out of the list of its parent. In the index it stays: the node that replaces it comes last, and is
// found before the index is asked, until another comes behind it and it is put there.
void SuffixTree::RemoveChild(std::int32_t child) {
  const SuffixNode& removed = At(child);
  SuffixNode& above = At(removed.Parent);
  (removed.previousSibling == 0 ? above.firstChild : At(removed.previousSibling).nextSibling) = removed.nextSibling;
  (removed.nextSibling == 0 ? above.lastChild : At(removed.nextSibling).previousSibling) = removed.previousSibling;
}

}  // namespace qmrules::validation
