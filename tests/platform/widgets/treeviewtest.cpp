#include "platform/widgets/treeview.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/widgets/treenodehandle.h"

namespace qmrules::platform::widgets {
namespace {

NewNode Node(const std::string& key) {
  return {key, key, "RULE", {}, false};
}

std::string Forward(const TreeView& tree) {
  std::string order;
  for (const TreeNode* node = tree.First(); node != nullptr; node = node->NextInOrder()) order += node->Text() + " ";
  return order;
}

std::string Backward(const TreeView& tree) {
  std::string order;
  for (const TreeNode* node = tree.Last(); node != nullptr; node = node->PreviousInOrder()) order += node->Text() + " ";
  return order;
}

class TreeViewTest : public testing::Test {
 protected:
  TreeView tree{"tvObjects"};
  TreeNode* f1 = tree.Add({"f1", "f1", "BUSINESSFUNC", {}, false});
  TreeNode* f2 = tree.Add({"f2", "f2", "BUSINESSFUNC", {}, false});
  TreeNode* f1s1 = tree.Add({"f1s1", "f1s1", "RULESET", "10", false}, f1);
  TreeNode* f1s2 = tree.Add({"f1s2", "f1s2", "RULESET", "20", false}, f1);
  TreeNode* f1r7 = tree.Add(Node("f1r7"), f1s1);
};

TEST_F(TreeViewTest, NodesAreFoundByKeyInAnyCase) {
  EXPECT_EQ(tree.Find("F1S1"), f1s1);
  EXPECT_EQ(tree.Find("f1s9"), nullptr);
  EXPECT_EQ(f1s1->Image(), "RULESET");
  EXPECT_EQ(f1s1->Tag(), "10");
  EXPECT_EQ(tree.Count(), 5U);
}

TEST_F(TreeViewTest, AKeyStandsOnce) {
  EXPECT_EQ(tree.Add(Node("F1S1"), f2), nullptr);
  EXPECT_EQ(tree.Count(), 5U);
  EXPECT_EQ(f2->FirstChild(), nullptr);
}

TEST_F(TreeViewTest, SeveralNodesMayHaveAnEmptyKey) {
  TreeNode* const first = tree.Add({{}, "Please, wait...", {}, {}, false}, f2);
  TreeNode* const second = tree.Add({{}, "Please, wait...", {}, {}, false}, f1s2);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(tree.Find(""), nullptr);
  tree.Remove(*first);
  EXPECT_EQ(f1s2->FirstChild(), second);
}

TEST_F(TreeViewTest, NeighboursAreTold) {
  EXPECT_EQ(f1->Parent(), nullptr);
  EXPECT_EQ(f1->NextSibling(), f2);
  EXPECT_EQ(f2->PreviousSibling(), f1);
  EXPECT_EQ(f1->PreviousSibling(), nullptr);
  EXPECT_EQ(f1s2->Parent(), f1);
  EXPECT_EQ(f1->FirstChild(), f1s1);
  EXPECT_EQ(f1->LastChild(), f1s2);
  EXPECT_EQ(f1->ChildCount(), 2U);
  EXPECT_EQ(tree.FirstRoot(), f1);
  EXPECT_EQ(tree.LastRoot(), f2);
  EXPECT_TRUE(f1r7->IsWithin(*f1));
  EXPECT_FALSE(f1r7->IsWithin(*f2));
}

TEST_F(TreeViewTest, ANodeGoesBelowBeforeOrBehindItsRelative) {
  tree.Add(Node("a"), f1s2, TreeRelation::tvwPrevious);
  tree.Add(Node("b"), f1s2, TreeRelation::tvwNext);
  tree.Add(Node("c"), f1s1, TreeRelation::tvwPrevious);
  tree.Add(Node("d"), f1, TreeRelation::tvwChild);
  tree.Add(Node("e"), f1, TreeRelation::tvwPrevious);
  tree.Add(Node("g"), f2, TreeRelation::tvwNext);
  EXPECT_EQ(Forward(tree), "e f1 c f1s1 f1r7 a f1s2 b d f2 g ");
  EXPECT_EQ(Backward(tree), "g f2 d b f1s2 a f1r7 f1s1 c f1 e ");
}

TEST_F(TreeViewTest, ReadingOrderTakesInWhatIsNotExpanded) {
  EXPECT_FALSE(f1->Expanded());
  EXPECT_EQ(Forward(tree), "f1 f1s1 f1r7 f1s2 f2 ");
  EXPECT_EQ(f1s1->NextBehind(), f1s2);
  EXPECT_EQ(f2->NextBehind(), nullptr);
}

TEST_F(TreeViewTest, ANodeGoesWithAllBelow) {
  tree.Remove(*f1);
  EXPECT_EQ(Forward(tree), "f2 ");
  EXPECT_EQ(tree.Count(), 1U);
  EXPECT_EQ(tree.Find("f1r7"), nullptr);
  EXPECT_NE(tree.Add(Node("f1r7")), nullptr);
}

TEST_F(TreeViewTest, NodesCanBeRemovedWalkingBackward) {
  for (TreeNode* node = tree.Last(); node != nullptr;) {
    TreeNode* const before = node->PreviousInOrder();
    if (node->Image() != "BUSINESSFUNC") tree.Remove(*node);
    node = before;
  }
  EXPECT_EQ(Forward(tree), "f1 f2 ");
}

TEST_F(TreeViewTest, TheSelectionFallsToTheNextSibling) {
  tree.SetSelectedNode(f1s1);
  tree.Remove(*f1s1);
  EXPECT_EQ(tree.SelectedNode(), f1s2);
}

TEST_F(TreeViewTest, TheSelectionFallsToThePreviousSiblingWithoutANextOne) {
  tree.SetSelectedNode(f1s2);
  tree.Remove(*f1s2);
  EXPECT_EQ(tree.SelectedNode(), f1s1);
}

TEST_F(TreeViewTest, TheSelectionFallsToTheParentWithoutSiblings) {
  tree.SetSelectedNode(f1r7);
  tree.Remove(*f1r7);
  EXPECT_EQ(tree.SelectedNode(), f1s1);
}

TEST_F(TreeViewTest, TheSelectionFallsToNothingWhenTheLastNodeGoes) {
  tree.Remove(*f1);
  tree.SetSelectedNode(f2);
  tree.Remove(*f2);
  EXPECT_EQ(tree.SelectedNode(), nullptr);
}

TEST_F(TreeViewTest, ASelectionBelowTheRemovedNodeFallsToThatNodesNeighbour) {
  int told = 0;
  const auto changes = tree.OnSelectionChanged.Subscribe([&] { ++told; });
  tree.SetSelectedNode(f1r7);
  tree.Remove(*f1);
  EXPECT_EQ(tree.SelectedNode(), f2);
  EXPECT_EQ(told, 2);
}

TEST_F(TreeViewTest, TheRemovalOfAnotherNodeKeepsTheSelection) {
  tree.SetSelectedNode(f1);
  int told = 0;
  const auto changes = tree.OnSelectionChanged.Subscribe([&] { ++told; });
  tree.Remove(*f1s1);
  EXPECT_EQ(tree.SelectedNode(), f1);
  EXPECT_EQ(told, 0);
}

TEST_F(TreeViewTest, ClearLeavesAnEmptyTreeThatCanBeFilledAgain) {
  tree.SetSelectedNode(f1r7);
  tree.Clear();
  EXPECT_EQ(tree.Count(), 0U);
  EXPECT_EQ(tree.First(), nullptr);
  EXPECT_EQ(tree.Last(), nullptr);
  EXPECT_EQ(tree.SelectedNode(), nullptr);
  EXPECT_EQ(tree.Find("f1"), nullptr);
  tree.Add(Node("f1"));
  EXPECT_EQ(Forward(tree), "f1 ");
}

TEST_F(TreeViewTest, AHandleForgetsANodeThatIsGone) {
  const TreeNodeHandle rule(f1r7);
  const TreeNodeHandle function(f1);
  const TreeNodeHandle none(nullptr);
  EXPECT_EQ(rule.Get(), f1r7);
  tree.Remove(*f1s1);
  EXPECT_EQ(rule.Get(), nullptr);
  EXPECT_EQ(function.Get(), f1);
  EXPECT_EQ(none.Get(), nullptr);
  tree.Clear();
  EXPECT_EQ(function.Get(), nullptr);
}

TEST_F(TreeViewTest, KeysAreFoundByPatternInReadingOrder) {
  tree.Add(Node("f2s1"), f2);
  EXPECT_EQ(tree.FindLike(shell::LikePattern("f*s1")), f1s1);
  EXPECT_EQ(tree.FindLike(shell::LikePattern("F*S1"), f1r7)->Key(), "f2s1");
  EXPECT_EQ(tree.FindLike(shell::LikePattern("f*s9")), nullptr);
  EXPECT_EQ(tree.AllLike(shell::LikePattern("f*s1")).size(), 2U);
  EXPECT_TRUE(tree.AllLike(shell::LikePattern("x*")).empty());
}

TEST_F(TreeViewTest, ViewsAreToldOfNodes) {
  std::string told;
  const auto added = tree.OnNodeAdded.Subscribe([&](TreeNode& node) { told += "+" + node.Key(); });
  const auto changed = tree.OnNodeChanged.Subscribe([&](TreeNode& node) { told += "*" + node.Key(); });
  const auto removing = tree.OnNodeRemoving.Subscribe([&](TreeNode& node) {
    told += "-" + node.Key();
    EXPECT_EQ(node.FirstChild(), f1r7);
  });
  const auto removed = tree.OnNodesRemoved.Subscribe([&] { told += "."; });
  tree.Add(Node("f1s3"), f1);
  f1s2->SetText("Renamed");
  f1s2->SetText("Renamed");
  f1s2->SetImage("RULE");
  f1s2->SetChecked(true);
  f1s2->SetTag("30");
  tree.Remove(*f1s1);
  EXPECT_EQ(told, "+f1s3*f1s2*f1s2*f1s2-f1s1.");
}

// Against a plain model: for every node its list of children.
TEST(TreeView, RandomInsertionsAndRemovalsKeepTheOrder) {
  std::mt19937 random(20);
  TreeView tree("tvObjects");
  struct Plain {
    std::string key;
    std::vector<Plain> children;
  };
  std::vector<Plain> roots;
  const std::function<Plain*(std::vector<Plain>&, const std::string&)> find = [&](std::vector<Plain>& list,
                                                                                  const std::string& key) -> Plain* {
    for (Plain& plain : list) {
      if (plain.key == key) return &plain;
      if (Plain* found = find(plain.children, key)) return found;
    }
    return nullptr;
  };
  const std::function<std::vector<Plain>*(std::vector<Plain>&, const std::string&)> listOf =
      [&](std::vector<Plain>& list, const std::string& key) -> std::vector<Plain>* {
    for (Plain& plain : list) {
      if (plain.key == key) return &list;
      if (auto* found = listOf(plain.children, key)) return found;
    }
    return nullptr;
  };
  const std::function<void(const std::vector<Plain>&, std::string&)> write = [&](const std::vector<Plain>& list,
                                                                                 std::string& order) {
    for (const Plain& plain : list) {
      order += plain.key + " ";
      write(plain.children, order);
    }
  };
  std::vector<std::string> keys;
  for (int step = 0; step < 2000; ++step) {
    std::erase_if(keys, [&](const std::string& key) { return tree.Find(key) == nullptr; });
    const std::string key = "k" + std::to_string(step);
    if (keys.empty()) {
      tree.Add(Node(key));
      roots.push_back({key, {}});
      keys.push_back(key);
      continue;
    }
    const std::string relative = keys[random() % keys.size()];
    std::vector<Plain>& siblings = *listOf(roots, relative);
    const auto at = std::find_if(siblings.begin(), siblings.end(), [&](const Plain& p) { return p.key == relative; });
    switch (random() % 5) {
      case 0:
        tree.Add(Node(key), tree.Find(relative), TreeRelation::tvwPrevious);
        siblings.insert(at, {key, {}});
        break;
      case 1:
        tree.Add(Node(key), tree.Find(relative), TreeRelation::tvwNext);
        siblings.insert(at + 1, {key, {}});
        break;
      case 2:
      case 3:
        tree.Add(Node(key), tree.Find(relative));
        find(roots, relative)->children.push_back({key, {}});
        break;
      default:
        tree.Remove(*tree.Find(relative));
        siblings.erase(at);
        continue;
    }
    keys.push_back(key);
    if (step % 50 != 0) continue;
    std::string expected;
    write(roots, expected);
    ASSERT_EQ(Forward(tree), expected);
  }
  std::string expected;
  write(roots, expected);
  EXPECT_EQ(Forward(tree), expected);
}

TEST(TreeView, AHundredThousandSiblingsAreAddedInsertedFoundAndRemoved) {
  constexpr int count = 100000;
  TreeView tree("tvObjects");
  TreeNode* const parent = tree.Add(Node("f1"));
  for (int number = 0; number < count; ++number) tree.Add(Node("f1r" + std::to_string(number)), parent);
  EXPECT_EQ(parent->ChildCount(), static_cast<std::size_t>(count));
  for (int number = 0; number < count; ++number) {
    ASSERT_NE(tree.Find("F1R" + std::to_string(number)), nullptr);
  }
  tree.Add(Node("middle"), tree.Find("f1r50000"), TreeRelation::tvwPrevious);
  EXPECT_EQ(tree.Find("middle")->PreviousSibling()->Key(), "f1r49999");
  for (int number = 0; number < count; number += 2) tree.Remove(*tree.Find("f1r" + std::to_string(number)));
  EXPECT_EQ(tree.Count(), static_cast<std::size_t>(count / 2 + 2));
  tree.Remove(*parent);
  EXPECT_EQ(tree.Count(), 0U);
}

TEST(TreeView, AVeryDeepTreeIsTakenDown) {
  TreeView tree("tvObjects");
  TreeNode* node = tree.Add(Node("top"));
  for (int depth = 0; depth < 100000; ++depth) node = tree.Add({}, node);
  EXPECT_EQ(tree.Last(), node);
  tree.Remove(*tree.First()->FirstChild());
  EXPECT_EQ(tree.Count(), 1U);
}

}  // namespace
}  // namespace qmrules::platform::widgets
