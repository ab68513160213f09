#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "validation/childindex.h"

// All that follows on each line of a file, as a tree. A file of the lines A, B, A, C has the numbers 1 2 1 3 -2 (the
// last is the terminator), and this tree, each edge with its numbers and each leaf with where in the file it begins:
//
//   root ── 2 1 3 -2 ── leaf 2
//        ── 1 ── 2 1 3 -2 ── leaf 1
//             ── 3 -2 ── leaf 3
//        ── 3 -2 ── leaf 4
//
// A run of lines stands in the file wherever a leaf lies below the path that spells it. The tree is built by
// McCreight's construction: suffix by suffix, each insertion starting where a suffix link leads from the last one.
//
// The order of children decides which of two equally near places a segment goes to, so it is part of the contract: a
// new leaf goes to the end of its parent's children; where an edge is split, the lower node leaves its parent's
// children, the new one goes to the end of them, and the lower node becomes its first child. (So above, the node of 1
// stands behind 2.)
namespace qmrules::validation {

enum class NodeKind { Root, Internal, Leaf };

// Numbers of nodes count from 1, the root; 0 is none. Positions are those of the line numbers and count from 1.
struct SuffixNode {
  std::int32_t Suffix = 0;           // leaf: where its suffix begins; internal: the suffix that made it; root: 0
  std::int32_t SuffixLink = 0;       // the node of this node's string without its first number; of leaves 0
  std::int32_t Parent = 0;           // of the root: itself
  std::int32_t BackLink = 0;         // the first node that was linked to this one
  std::int32_t EdgeStart = 0;        // position of the first number on the edge above
  std::int32_t EdgeLength = 0;       // numbers on it
  std::int32_t Depth = 0;            // numbers from the root to here
  std::int32_t firstChild = 0;       // the ordered list of the children
  std::int32_t lastChild = 0;        //
  std::int32_t nextSibling = 0;      //
  std::int32_t previousSibling = 0;  //
  std::int32_t edgeId = 0;           // the first number on the edge above
};

class SuffixTree {
 public:
  // Builds the tree of `lineIds`, which are as FileLines gives them and must outlive it; memory is kept.
  // `processEvents` is called once for each suffix, unless empty. Time: linear. Memory: at most two nodes for each
  // line.
  void BuildSuffixTree(std::span<const std::int32_t> lineIds, const std::function<void()>& processEvents);

  // The node at or below which all suffixes that begin with `segmentIds` have their leaves; 0 when there are none, and
  // for an empty segment. Exact: every number is compared. Time: the length of the segment.
  std::int32_t FindSegment(std::span<const std::int32_t> segmentIds) const;

  // Appends the suffix of each leaf at or below the node, depth first, children in their order. Time: their number.
  void CollectLeaves(std::int32_t node, std::vector<std::int32_t>& suffixes) const;

  std::int32_t NodeCount() const { return static_cast<std::int32_t>(nodes_.size()) - 1; }
  const SuffixNode& Node(std::int32_t node) const { return nodes_[static_cast<std::size_t>(node)]; }
  NodeKind Kind(std::int32_t node) const;
  // Bytes held.
  std::size_t Bytes() const;

 private:
  static constexpr std::int32_t kRoot = 1;

  void MakeRoom();
  void FetchAhead() const;
  void InsertSuffix();
  void LinkHead();
  std::int32_t ScanOn(std::int32_t& node) const;
  std::int32_t SplitEdge(std::int32_t lower, std::int32_t depth);
  void AddLeaf(std::int32_t parent, std::int32_t edgeStart);
  void AddLastLeaf();
  std::int32_t AddNode(const SuffixNode& node);
  std::int32_t Child(std::int32_t node, std::int32_t id) const;
  void AppendChild(std::int32_t parent, std::int32_t child);
  void RemoveChild(std::int32_t child);

  SuffixNode& At(std::int32_t node) { return nodes_[static_cast<std::size_t>(node)]; }
  std::int32_t Id(std::int32_t position) const { return lineIds_[static_cast<std::size_t>(position)]; }
  std::int32_t Terminator() const { return static_cast<std::int32_t>(lineIds_.size()) - 1; }

  std::span<const std::int32_t> lineIds_;
  std::vector<SuffixNode> nodes_;           // from 1; the first is not used
  std::vector<std::int32_t> rootChildren_;  // the child of the root by the number that its edge begins with
  ChildIndex children_;                     // of other nodes: the children between the first and the last
  // While building:
  std::int32_t currentSuffix_ = 0;
  std::int32_t head_ = 0;  // the node at which the longest known beginning of the last suffix ended
  std::int32_t tail_ = 0;  // position of the last number of that beginning
};

}  // namespace qmrules::validation
