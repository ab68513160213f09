#include "validation/suffixtree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>

#include "validation/filelines.h"

namespace qmrules::validation {
namespace {

std::vector<std::int32_t> WithEnds(std::vector<std::int32_t> ids) {
  ids.insert(ids.begin(), kBeforeFirst);
  ids.push_back(kTerminator);
  return ids;
}

class Tree {
 public:
  explicit Tree(std::vector<std::int32_t> ids) : ids_(WithEnds(std::move(ids))) { tree_.BuildSuffixTree(ids_, {}); }

  // "(2132-2:2 1(...))": each edge with its numbers, leaves with their suffix.
  std::string Drawn(std::int32_t node = 1) const {
    std::string text;
    for (std::int32_t child = tree_.Node(node).firstChild; child != 0; child = tree_.Node(child).nextSibling) {
      if (!text.empty()) text += ' ';
      const SuffixNode& at = tree_.Node(child);
      for (std::int32_t k = 0; k < at.EdgeLength; ++k) {
        const std::int32_t id = ids_[static_cast<std::size_t>(at.EdgeStart + k)];
        text += id == kTerminator ? "$" : std::to_string(id);
      }
      text += tree_.Kind(child) == NodeKind::Leaf ? ":" + std::to_string(at.Suffix) : "(" + Drawn(child) + ")";
    }
    return text;
  }

  std::vector<std::int32_t> Find(const std::vector<std::int32_t>& segment) const {
    std::vector<std::int32_t> starts;
    if (const std::int32_t node = tree_.FindSegment(segment); node != 0) tree_.CollectLeaves(node, starts);
    return starts;
  }

  const SuffixTree& operator*() const { return tree_; }

 private:
  std::vector<std::int32_t> ids_;
  SuffixTree tree_;
};

using Starts = std::vector<std::int32_t>;

TEST(SuffixTree, NewNodeOfASplitGoesToTheEndAndTheLowerNodeIsItsFirstChild) {
  EXPECT_EQ(Tree({1, 2, 1, 3}).Drawn(), "213$:2 1(213$:1 3$:3) 3$:4");
}

TEST(SuffixTree, OfARepeatedLineIsASpine) {
  EXPECT_EQ(Tree({1, 1, 1}).Drawn(), "1(1(1$:1 $:2) $:3)");
}

TEST(SuffixTree, OfNoLinesHasTheRootAndTheLeafThatNothingLeadsTo) {
  const Tree tree({});
  EXPECT_EQ((*tree).NodeCount(), 2);
  EXPECT_EQ((*tree).Kind(1), NodeKind::Root);
  EXPECT_EQ(tree.Drawn(), "");
  EXPECT_EQ((*tree).Node(2).Suffix, 1);
  EXPECT_EQ((*tree).Node(2).EdgeStart, 0);
  EXPECT_EQ((*tree).Node(2).EdgeLength, 1);
  EXPECT_EQ((*tree).Node(2).Parent, 1);
}

TEST(SuffixTree, HasALeafForEachLineAndOneForTheTerminator) {
  const Tree tree({1, 2, 1, 2, 2, 3, 1, 2});
  std::vector<std::int32_t> leaves;
  for (std::int32_t node = 1; node <= (*tree).NodeCount(); ++node) {
    if ((*tree).Kind(node) == NodeKind::Leaf) leaves.push_back((*tree).Node(node).Suffix);
  }
  std::ranges::sort(leaves);
  Starts all(9);
  std::iota(all.begin(), all.end(), 1);
  EXPECT_EQ(leaves, all);
}

TEST(SuffixTree, SuffixLinksLeadToTheStringWithoutItsFirstNumber) {
  const Tree tree({1, 2, 3, 1, 2, 3, 1, 2, 4, 2, 3, 4});
  int links = 0;
  for (std::int32_t node = 2; node <= (*tree).NodeCount(); ++node) {
    const SuffixNode& at = (*tree).Node(node);
    if ((*tree).Kind(node) != NodeKind::Internal || at.SuffixLink == 0) continue;
    ++links;
    EXPECT_EQ((*tree).Node(at.SuffixLink).Depth, at.Depth - 1);
  }
  EXPECT_GT(links, 2);
}

TEST(SuffixTree, FindsEachPlaceInTheOrderOfTheLeaves) {
  const Tree tree({1, 2, 1, 3});
  EXPECT_EQ(tree.Find({1}), (Starts{1, 3}));
  EXPECT_EQ(tree.Find({1, 2}), (Starts{1}));
  EXPECT_EQ(tree.Find({3}), (Starts{4}));
  EXPECT_EQ(tree.Find({1, 2, 1, 3}), (Starts{1}));
}

TEST(SuffixTree, FindsNothingThatIsNotThere) {
  const Tree tree({3, 1, 1, 2, 3});
  EXPECT_EQ(tree.Find({1, 3, 1}), Starts{});
  EXPECT_EQ(tree.Find({2, 3, 1}), Starts{});
  EXPECT_EQ(tree.Find({3, 1, 1, 2, 3, 3}), Starts{});
  EXPECT_EQ(tree.Find({}), Starts{});
}

TEST(SuffixTree, DoesNotMatchTheTerminator) {
  EXPECT_EQ(Tree({1, 2}).Find({2, kTerminator}).size(), 1U) << "the terminator is a number like any other";
  EXPECT_EQ(Tree({1, 2}).Find({2, 1}), Starts{});
}

// Every line is followed by a different one, so that the node of line 1 has as many children as there are pairs.
TEST(SuffixTree, NodeOfManyChildrenKeepsTheirOrder) {
  std::vector<std::int32_t> ids;
  Starts starts;
  for (std::int32_t id = 2; id < 3000; ++id) {
    starts.push_back(static_cast<std::int32_t>(ids.size()) + 1);
    ids.insert(ids.end(), {1, id});
  }
  const Tree tree(std::move(ids));
  EXPECT_EQ(tree.Find({1}), starts);
  for (std::int32_t id = 2; id < 3000; ++id)
    EXPECT_EQ(tree.Find({1, id}), (Starts{starts[static_cast<std::size_t>(id - 2)]}));
}

TEST(SuffixTree, ChildrenThatComeBackGoToTheEndOfManyOneByOne) {
  std::vector<std::int32_t> ids;
  for (int round = 0; round < 2; ++round) {
    for (std::int32_t id = 2; id < 300; ++id) ids.insert(ids.end(), {1, id, 1000 + round});
  }
  const Tree tree(ids);
  Starts expected;
  for (std::int32_t id = 2; id < 300; ++id) {
    expected.push_back(3 * (id - 2) + 1);
    expected.push_back(3 * (id - 2 + 298) + 1);
    EXPECT_EQ(tree.Find({1, id}), (Starts{expected.end()[-2], expected.end()[-1]}));
  }
  EXPECT_EQ(tree.Find({1}), expected);
}

TEST(SuffixTree, OfTheDepthOfAMillionIsSearchedWithoutRecursion) {
  constexpr std::int32_t lines = 1'000'000;
  const Tree tree(std::vector<std::int32_t>(lines, 1));
  const auto starts = tree.Find({1, 1});
  ASSERT_EQ(starts.size(), static_cast<std::size_t>(lines - 1));
  EXPECT_EQ(tree.Find(std::vector<std::int32_t>(lines, 1)), Starts{1});
  EXPECT_EQ(tree.Find(std::vector<std::int32_t>(lines + 1, 1)), Starts{});
}

TEST(SuffixTree, OfHalfDistinctLinesTakesLessThanTwoHundredBytesForEach) {
  constexpr std::size_t lines = 200'000;
  std::string text;
  for (std::size_t row = 0; row < lines; ++row) text += "LINE " + std::to_string(row * 2654435761U % 100'003) + "\n";
  FileLines fileLines;
  fileLines.LoadLineIds(text, false, lines);
  SuffixTree tree;
  tree.BuildSuffixTree(fileLines.LineIds(), {});
  EXPECT_NEAR(fileLines.DistinctLines(), lines / 2, lines / 20);
  EXPECT_LT((fileLines.Bytes() + tree.Bytes()) / lines, 200U);
}

}  // namespace
}  // namespace qmrules::validation
